#include "resources/ids.h"
#include "scheduler/ui/dialogs.h"
#include "scheduler/ui/preferencesdialog.h"
#include "tests/scheduler/ui/framework/pumping.h"
#include "tests/scheduler/ui/whileopen.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>

namespace {

using scheduler::Preferences;
using test::pumpUntilIdle;
using test::typeInto;

class PreferencesDialog : public testing::Test {
protected:
    void open() {
        dialog_ = std::make_unique<scheduler::PreferencesDialog>(preferences_);
        ASSERT_TRUE(dialog_->open(nullptr));
    }

    HWND item(int id) const { return GetDlgItem(dialog_->handle(), id); }

    bool isChecked(int id) const { return IsDlgButtonChecked(dialog_->handle(), id) == BST_CHECKED; }

    bool isEnabled(int id) const { return IsWindowEnabled(item(id)) != FALSE; }

    void click(int id) const {
        SendMessageA(item(id), BM_CLICK, 0, 0);
        pumpUntilIdle();
    }

    void uncheckBoth() const {
        for (const int id : {IDC_WAIT_FOR_FIRST, IDC_RUN_BESIDE_FIRST})
            SendMessageA(item(id), BM_SETCHECK, BST_UNCHECKED, 0);
    }

    std::string minutes() const {
        char text[16]{};
        GetWindowTextA(item(IDC_WAIT_TIME), text, sizeof text);
        return text;
    }

    void selectMinutes() const { SendMessageA(item(IDC_WAIT_TIME), EM_SETSEL, 0, -1); }

    Preferences preferences_;
    std::unique_ptr<scheduler::PreferencesDialog> dialog_;
};

TEST_F(PreferencesDialog, ShowsThePreferences) {
    for (const bool flag : {false, true}) {
        preferences_.autostart = flag;
        preferences_.runMultiple = flag;
        preferences_.waitTime = flag ? 7 : 1440;
        open();
        EXPECT_EQ(isChecked(IDC_AUTOSTART), flag);
        EXPECT_EQ(isChecked(IDC_WAIT_FOR_FIRST), !flag);
        EXPECT_EQ(isChecked(IDC_RUN_BESIDE_FIRST), flag);
        EXPECT_EQ(minutes(), flag ? "7" : "1440");
        EXPECT_EQ(isEnabled(IDC_WAIT_TIME), !flag) << "from the start";
    }
}

TEST_F(PreferencesDialog, TheMinutesAreDisabledWhileTheSecondProjectRunsBesideAndEnabledAgainByWaiting) {
    open();
    click(IDC_RUN_BESIDE_FIRST);
    EXPECT_FALSE(isEnabled(IDC_WAIT_TIME));
    click(IDC_WAIT_FOR_FIRST);
    EXPECT_TRUE(isEnabled(IDC_WAIT_TIME));
}

TEST_F(PreferencesDialog, TheMinutesAreEnabledWithNoButtonChecked) {
    preferences_.runMultiple = true;
    open();
    uncheckBoth();
    dialog_->onIdle();
    EXPECT_TRUE(isEnabled(IDC_WAIT_TIME));
}

TEST_F(PreferencesDialog, WithNoButtonCheckedTheFlagIsStoredAsSet) {
    open();
    uncheckBoth();
    click(IDOK);
    EXPECT_TRUE(preferences_.runMultiple);
}

TEST_F(PreferencesDialog, Typing5000Shows1440OnceTheFourthDigitIsTyped) {
    open();
    selectMinutes();
    for (const auto& [digit, shown] : {std::pair{"5", "5"}, {"0", "50"}, {"0", "500"}, {"0", "1440"}}) {
        typeInto(item(IDC_WAIT_TIME), digit);
        EXPECT_EQ(minutes(), shown);
    }
    DWORD from = 0;
    DWORD to = 0;
    SendMessageA(item(IDC_WAIT_TIME), EM_GETSEL, reinterpret_cast<WPARAM>(&from),
                 reinterpret_cast<LPARAM>(&to));
    EXPECT_EQ(from, 4U) << "the caret is after the text";
    EXPECT_EQ(to, 4U);
}

TEST_F(PreferencesDialog, OkRightBehindTheLastDigitStoresANumberWithinItsRange) {
    open();
    selectMinutes();
    for (const char digit : std::string("5000"))
        PostMessageA(item(IDC_WAIT_TIME), WM_CHAR, static_cast<WPARAM>(digit), 1);
    PostMessageA(dialog_->handle(), WM_COMMAND, MAKEWPARAM(IDOK, BN_CLICKED),
                 reinterpret_cast<LPARAM>(item(IDOK)));
    pumpUntilIdle();
    EXPECT_EQ(dialog_->modalResult(), IDOK);
    EXPECT_EQ(preferences_.waitTime, 1440U);
}

TEST_F(PreferencesDialog, TheMinutesTakeFourDigitsAndNothingElse) {
    open();
    selectMinutes();
    typeInto(item(IDC_WAIT_TIME), "1x2-345");
    EXPECT_EQ(minutes(), "1234");
}

TEST_F(PreferencesDialog, AZeroIsWrittenBackSelected) {
    open();
    selectMinutes();
    typeInto(item(IDC_WAIT_TIME), "\b");
    EXPECT_EQ(minutes(), "0");
    typeInto(item(IDC_WAIT_TIME), "5");
    EXPECT_EQ(minutes(), "5");
}

TEST_F(PreferencesDialog, AWaitTimeOutOfRangeIsClampedByTheFirstIdlePass) {
    preferences_.waitTime = 5000;
    open();
    EXPECT_EQ(minutes(), "5000");
    click(IDC_AUTOSTART);
    EXPECT_EQ(minutes(), "1440");
}

/// What a user does in the dialog: everything that there is.
void changeAll(HWND dialog) {
    SendDlgItemMessageA(dialog, IDC_AUTOSTART, BM_CLICK, 0, 0);
    SetDlgItemTextA(dialog, IDC_WAIT_TIME, "45");
    SendDlgItemMessageA(dialog, IDC_RUN_BESIDE_FIRST, BM_CLICK, 0, 0);
}

TEST_F(PreferencesDialog, OkStoresWhatIsShownAndNothingElse) {
    preferences_.suspended = true;
    preferences_.windowState.fill(std::byte{3});
    const test::WhileOpen user([](HWND dialog) {
        changeAll(dialog);
        SendDlgItemMessageA(dialog, IDOK, BM_CLICK, 0, 0);
    });
    EXPECT_TRUE(scheduler::editPreferences(nullptr, preferences_));
    EXPECT_FALSE(preferences_.autostart);
    EXPECT_TRUE(preferences_.runMultiple);
    EXPECT_EQ(preferences_.waitTime, 45U);
    EXPECT_TRUE(preferences_.suspended);
    EXPECT_EQ(preferences_.windowState.front(), std::byte{3});
}

TEST_F(PreferencesDialog, OkWithoutAChangeLeavesThePreferencesAsTheyAre) {
    const test::WhileOpen user([](HWND dialog) { SendDlgItemMessageA(dialog, IDOK, BM_CLICK, 0, 0); });
    EXPECT_TRUE(scheduler::editPreferences(nullptr, preferences_));
    EXPECT_TRUE(preferences_.autostart);
    EXPECT_FALSE(preferences_.runMultiple);
    EXPECT_EQ(preferences_.waitTime, 20U);
}

TEST_F(PreferencesDialog, NothingReachesThePreferencesBeforeOk) {
    open();
    changeAll(dialog_->handle());
    pumpUntilIdle();
    EXPECT_TRUE(preferences_.autostart);
    EXPECT_FALSE(preferences_.runMultiple);
    EXPECT_EQ(preferences_.waitTime, 20U);
}

TEST_F(PreferencesDialog, CancelLeavesThePreferencesUntouched) {
    const std::function<void(HWND)> ways[] = {
        [](HWND dialog) { SendDlgItemMessageA(dialog, IDCANCEL, BM_CLICK, 0, 0); },
        [](HWND dialog) { PostMessageA(GetDlgItem(dialog, IDC_WAIT_FOR_FIRST), WM_KEYDOWN, VK_ESCAPE, 1); },
        [](HWND dialog) { SendMessageA(dialog, WM_SYSCOMMAND, SC_CLOSE, 0); },
    };
    for (const auto& leave : ways) {
        const test::WhileOpen user([&](HWND dialog) {
            changeAll(dialog);
            leave(dialog);
        });
        EXPECT_FALSE(scheduler::editPreferences(nullptr, preferences_));
        EXPECT_TRUE(preferences_.autostart);
        EXPECT_FALSE(preferences_.runMultiple);
        EXPECT_EQ(preferences_.waitTime, 20U);
    }
}

} // namespace
