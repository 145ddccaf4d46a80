#include "scheduler/ui/framework/textextent.h"
#include "tests/scheduler/ui/framework/pumping.h"
#include "tests/scheduler/ui/framework/steppedwindows.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

class LoggingDialog : public framework::Dialog {
public:
    LoggingDialog() : Dialog(IDD_CONTROLS) {}

    std::string log;
    test::LoggingEdit first{*this, IDC_TEXT, "first", log};
    test::LoggingEdit second{*this, IDC_SECOND_TEXT, "second", log};
    test::LoggingEdit third{*this, IDC_DATE, "third", log};
    std::function<bool(int, UINT)> handler;

protected:
    void updateState() override { log += "state; "; }
    bool onCommand(int id, UINT code) override {
        return (handler && handler(id, code)) || Dialog::onCommand(id, code);
    }
};

class ControlHost : public testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(dialog->open(nullptr)); }

    std::string logOf(const std::function<void()>& act) {
        dialog->log.clear();
        act();
        return dialog->log;
    }

    std::unique_ptr<LoggingDialog> dialog = std::make_unique<LoggingDialog>();
};

TEST_F(ControlHost, LoadsStoresAndIdlesItsControlsInOrderOfDeclaration) {
    EXPECT_EQ(dialog->log, "load first; load second; load third; state; ");
    EXPECT_EQ(logOf([&] { dialog->store(); }), "store first; store second; store third; ");
    dialog->first.logsIdle = dialog->second.logsIdle = dialog->third.logsIdle = true;
    EXPECT_EQ(logOf([] { test::pumpUntilIdle(); }), "idle first; idle second; idle third; state; ");
}

TEST_F(ControlHost, WidensTruncatedTextsWhenItOpens) {
    const HWND label = GetDlgItem(dialog->handle(), IDC_TRUNCATED_LABEL);
    EXPECT_EQ(framework::sizeOf(label).cx, framework::TextExtent(label).of("too long for its place").cx);
}

TEST_F(ControlHost, ChecksVisibleEnabledControlsUpToTheFirstFailure) {
    EXPECT_EQ(logOf([&] { EXPECT_TRUE(dialog->check()); }), "check first; check second; check third; ");
    dialog->first.passes = dialog->second.passes = false;
    dialog->first.setEnabled(false);
    EXPECT_EQ(logOf([&] { EXPECT_FALSE(dialog->check()); }), "check second; ");
    dialog->second.setVisible(false);
    EXPECT_EQ(logOf([&] { EXPECT_TRUE(dialog->check()); }), "check third; ");
}

TEST_F(ControlHost, ReflectsANotificationToItsControlOnceUnlessTheDialogHandlesIt) {
    int changes = 0;
    dialog->second.onChange = [&] { ++changes; };
    SetWindowTextA(dialog->second.handle(), "changed");
    EXPECT_EQ(changes, 1);
    SetWindowTextA(dialog->first.handle(), "changed");
    EXPECT_EQ(changes, 1);
    int seen = 0;
    dialog->handler = [&](int id, UINT code) {
        seen += id == IDC_SECOND_TEXT && code == EN_CHANGE ? 1 : 0;
        return true;
    };
    SetWindowTextA(dialog->second.handle(), "changed again");
    EXPECT_EQ(seen, 1);
    EXPECT_EQ(changes, 1);
}

TEST_F(ControlHost, ACommandWithoutAControlReachesOnlyTheDialog) {
    int seen = 0;
    dialog->handler = [&](int id, UINT) {
        seen += id;
        return id == 4711;
    };
    for (const WORD id : {WORD{4711}, WORD{1}})
        SendMessageA(dialog->handle(), WM_COMMAND, MAKEWPARAM(id, 2), 0);
    EXPECT_EQ(seen, 4712);
}

TEST_F(ControlHost, ADialogMayBeDestroyedInsideItsOwnHandler) {
    const HWND handle = dialog->handle();
    dialog->handler = [&](int, UINT) {
        const auto handler = std::move(dialog->handler); // keeps the running lambda alive
        dialog.reset();
        return true;
    };
    SendMessageA(handle, WM_COMMAND, MAKEWPARAM(4711, 0), 0);
    EXPECT_FALSE(IsWindow(handle));
}

TEST_F(ControlHost, ADialogMayBeDestroyedInsideAControlsHandler) {
    const HWND handle = dialog->handle();
    const HWND edit = dialog->first.handle();
    dialog->first.onChange = [&] {
        const auto handler = std::move(dialog->first.onChange);
        dialog.reset();
    };
    SetWindowTextA(edit, "changed");
    EXPECT_FALSE(IsWindow(handle));
    EXPECT_FALSE(IsWindow(edit));
}

TEST_F(ControlHost, AWindowMayBeDestroyedBeforeItsObject) {
    DestroyWindow(dialog->handle());
    EXPECT_EQ(dialog->handle(), nullptr);
    EXPECT_EQ(dialog->first.handle(), nullptr);
    EXPECT_EQ(logOf([&] {
                  dialog->store();
                  EXPECT_TRUE(dialog->check());
                  dialog->onIdle();
              }),
              "state; ");
}

} // namespace
