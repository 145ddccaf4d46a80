#include "scheduler/ui/framework/controlhost.h"
#include "scheduler/ui/framework/dialog.h"
#include "scheduler/ui/framework/edit.h"
#include "scheduler/ui/framework/textextent.h"
#include "tests/scheduler/ui/framework/pumping.h"
#include "tests/scheduler/ui/framework/testdialogs.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <stdexcept>
#include <string>

namespace {

using test::pumpUntilIdle;

/// Tells a log what happens to it.
class LoggingEdit : public framework::Edit {
public:
    LoggingEdit(framework::ControlHost& host, int id, std::string name, std::string& log)
        : Edit(host, id), name_(std::move(name)), log_(log) {}

    void load() override { log_ += "load " + name_ + "; "; }
    void store() override { log_ += "store " + name_ + "; "; }
    void onIdle() override { log_ += "idle " + name_ + "; "; }
    bool check() override {
        log_ += "check " + name_ + "; ";
        return passes;
    }
    bool onNotification(UINT code) override {
        if (code == EN_CHANGE && onChange)
            onChange();
        return code == EN_CHANGE;
    }

    bool passes = true;
    std::function<void()> onChange;

private:
    std::string name_;
    std::string& log_;
};

class LoggingDialog : public framework::Dialog {
public:
    LoggingDialog() : Dialog(IDD_CONTROLS) {}

    std::string log;
    LoggingEdit first{*this, IDC_TEXT, "first", log};
    LoggingEdit second{*this, IDC_SECOND_TEXT, "second", log};
    LoggingEdit third{*this, IDC_DATE, "third", log};
    std::function<bool(int, UINT)> handler;

protected:
    void updateState() override { log += "state; "; }
    bool onCommand(int id, UINT code) override {
        return (handler && handler(id, code)) || Dialog::onCommand(id, code);
    }
};

class Host : public testing::Test {
protected:
    void SetUp() override {
        dialog = std::make_unique<LoggingDialog>();
        ASSERT_TRUE(dialog->open(nullptr));
    }

    std::string logOf(const std::function<void()>& act) {
        dialog->log.clear();
        act();
        return dialog->log;
    }

    std::unique_ptr<LoggingDialog> dialog;
};

TEST_F(Host, LoadsItsControlsAndSetsItsStateAtTheStart) {
    EXPECT_EQ(dialog->log, "load first; load second; load third; state; ");
}

TEST_F(Host, WidensTextsThatAreCutAtTheStart) {
    const HWND label = GetDlgItem(dialog->handle(), IDC_CUT_LABEL);
    RECT place{};
    GetWindowRect(label, &place);
    EXPECT_EQ(place.right - place.left, framework::TextExtent(label).of("too long for its place").cx);
}

TEST_F(Host, StoresItsControlsInTheirOrder) {
    EXPECT_EQ(logOf([&] { dialog->store(); }), "store first; store second; store third; ");
}

TEST_F(Host, AnIdlePassReachesItsControlsThenItsState) {
    EXPECT_EQ(logOf([&] { pumpUntilIdle(); }), "idle first; idle second; idle third; state; ");
}

TEST_F(Host, ChecksStopAtTheFirstThatFails) {
    EXPECT_EQ(logOf([&] { EXPECT_TRUE(dialog->check()); }), "check first; check second; check third; ");
    dialog->second.passes = false;
    EXPECT_EQ(logOf([&] { EXPECT_FALSE(dialog->check()); }), "check first; check second; ");
}

TEST_F(Host, HiddenAndDisabledControlsAreNotChecked) {
    dialog->first.passes = dialog->second.passes = false;
    dialog->first.setEnabled(false);
    dialog->second.setVisible(false);
    EXPECT_EQ(logOf([&] { EXPECT_TRUE(dialog->check()); }), "check third; ");
}

TEST_F(Host, ANotificationComesBackToItsControlOnce) {
    int changes = 0;
    dialog->second.onChange = [&] { ++changes; };
    SetWindowTextA(dialog->second.handle(), "changed");
    EXPECT_EQ(changes, 1);
    SetWindowTextA(dialog->first.handle(), "changed");
    EXPECT_EQ(changes, 1);
}

TEST_F(Host, TheDialogSeesANotificationFirst) {
    int changes = 0;
    dialog->second.onChange = [&] { ++changes; };
    int seen = 0;
    dialog->handler = [&](int id, UINT code) {
        seen += id == IDC_SECOND_TEXT && code == EN_CHANGE ? 1 : 0;
        return true;
    };
    SetWindowTextA(dialog->second.handle(), "changed");
    EXPECT_EQ(seen, 1);
    EXPECT_EQ(changes, 0);
}

TEST_F(Host, ACommandWithoutAControlIsTheDialogsOnly) {
    int seen = 0;
    dialog->handler = [&](int id, UINT) {
        seen += id;
        return true;
    };
    SendMessageA(dialog->handle(), WM_COMMAND, MAKEWPARAM(4711, 1), 0);
    EXPECT_EQ(seen, 4711);
    dialog->handler = nullptr;
    SendMessageA(dialog->handle(), WM_COMMAND, MAKEWPARAM(4711, 1), 0);
}

TEST_F(Host, ANestedMessageDoesNotDisturbTheOuterOne) {
    std::string order;
    dialog->first.onChange = [&] {
        order += "first ";
        SetWindowTextA(dialog->second.handle(), "changed, too");
        order += "first again ";
    };
    dialog->second.onChange = [&] { order += "second "; };
    SetWindowTextA(dialog->first.handle(), "changed");
    EXPECT_EQ(order, "first second first again ");
    EXPECT_EQ(dialog->second.text(), "changed, too");
}

TEST_F(Host, ADialogMayBeDestroyedInsideItsOwnHandler) {
    const HWND handle = dialog->handle();
    dialog->handler = [&](int, UINT) {
        const auto handler = std::move(dialog->handler); // what runs outlives the dialog
        dialog.reset();
        return true;
    };
    SendMessageA(handle, WM_COMMAND, MAKEWPARAM(4711, 0), 0);
    EXPECT_FALSE(IsWindow(handle));
}

TEST_F(Host, ADialogMayBeDestroyedInsideAControlsHandler) {
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

TEST_F(Host, AWindowMayDieBeforeItsObject) {
    DestroyWindow(dialog->handle());
    EXPECT_EQ(dialog->handle(), nullptr);
    EXPECT_EQ(dialog->first.handle(), nullptr);
    EXPECT_EQ(logOf([&] {
                  dialog->store();
                  dialog->check();
                  dialog->onIdle();
              }),
              "state; ");
}

TEST_F(Host, NoExceptionLeavesAHandler) {
    dialog->handler = [](int, UINT) -> bool { throw std::runtime_error("refused"); };
    SendMessageA(dialog->handle(), WM_COMMAND, MAKEWPARAM(4711, 0), 0);
    EXPECT_TRUE(IsWindow(dialog->handle()));
}

class FailingDialog : public framework::Dialog {
public:
    FailingDialog() : Dialog(IDD_CONTROLS) {}
    void load() override { throw std::runtime_error("refused"); }
};

TEST(HostStart, ADialogThatCouldNotBeLoadedIsNotMade) {
    FailingDialog dialog;
    ASSERT_FALSE(dialog.open(nullptr));
    EXPECT_EQ(dialog.handle(), nullptr);
    EXPECT_EQ(dialog.runModal(nullptr), framework::notMade);
}

TEST(HostStart, WithoutATemplateThereIsNoDialog) {
    class NoTemplate : public framework::Dialog {
    public:
        NoTemplate() : Dialog(4711) {}
    } dialog;
    EXPECT_FALSE(dialog.open(nullptr));
    EXPECT_EQ(dialog.handle(), nullptr);
}

} // namespace
