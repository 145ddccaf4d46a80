#include "resources/ids.h"
#include "scheduler/ui/dialogs.h"
#include "tests/scheduler/ui/editoruser.h"
#include "tests/scheduler/ui/framework/pumping.h"

#include <gtest/gtest.h>

namespace {

using test::press;

class PreferencesDialog : public testing::Test {
protected:
    bool edit(const std::function<void(HWND dialog)>& act, int leave = IDOK) {
        const test::WhileOpen user([&](HWND dialog) {
            act(dialog);
            press(dialog, leave);
        });
        return scheduler::editPreferences(nullptr, preferences_);
    }

    static std::string minutes(HWND dialog) {
        std::array<char, 16> text{};
        GetDlgItemTextA(dialog, IDC_WAIT_TIME, text.data(), static_cast<int>(text.size()));
        return text.data();
    }
    static bool isChecked(HWND dialog, int id) { return IsDlgButtonChecked(dialog, id) == BST_CHECKED; }
    static bool minutesAreEnabled(HWND dialog) {
        framework::Window::of(dialog)->onIdle();
        return IsWindowEnabled(GetDlgItem(dialog, IDC_WAIT_TIME)) != FALSE;
    }
    static void uncheckBoth(HWND dialog) {
        for (const int id : {IDC_WAIT_FOR_FIRST, IDC_RUN_BESIDE_FIRST})
            CheckDlgButton(dialog, id, BST_UNCHECKED);
    }
    void expectPreferences(bool autostart, bool runMultiple, std::uint32_t waitTime) const {
        EXPECT_EQ(preferences_.autostart, autostart);
        EXPECT_EQ(preferences_.runMultiple, runMultiple);
        EXPECT_EQ(preferences_.waitTime, waitTime);
    }

    scheduler::Preferences preferences_;
};

TEST_F(PreferencesDialog, ShowsThePreferencesAndStoresThemUnchanged) {
    for (const bool flag : {false, true}) {
        preferences_.autostart = flag;
        preferences_.runMultiple = flag;
        preferences_.waitTime = flag ? 7 : 1440;
        EXPECT_TRUE(edit([&](HWND dialog) {
            EXPECT_EQ(isChecked(dialog, IDC_AUTOSTART), flag);
            EXPECT_EQ(isChecked(dialog, IDC_WAIT_FOR_FIRST), !flag);
            EXPECT_EQ(isChecked(dialog, IDC_RUN_BESIDE_FIRST), flag);
            EXPECT_EQ(minutes(dialog), flag ? "7" : "1440");
            EXPECT_EQ(IsWindowEnabled(GetDlgItem(dialog, IDC_WAIT_TIME)), !flag) << "when the dialog opens";
        }));
        expectPreferences(flag, flag, flag ? 7 : 1440);
    }
}

TEST_F(PreferencesDialog, TheMinutesAreEnabledUnlessTheSecondProjectRunsBesideTheFirst) {
    edit([](HWND dialog) {
        press(dialog, IDC_RUN_BESIDE_FIRST);
        EXPECT_FALSE(minutesAreEnabled(dialog));
        press(dialog, IDC_WAIT_FOR_FIRST);
        EXPECT_TRUE(minutesAreEnabled(dialog));
        press(dialog, IDC_RUN_BESIDE_FIRST);
        uncheckBoth(dialog);
        EXPECT_TRUE(minutesAreEnabled(dialog)) << "with no button checked";
    });
}

TEST_F(PreferencesDialog, StoredMinutesAreClampedToOneDay) {
    edit([](HWND dialog) { SetDlgItemTextA(dialog, IDC_WAIT_TIME, "5000"); });
    EXPECT_EQ(preferences_.waitTime, 1440U);
}

TEST_F(PreferencesDialog, OnlyOkStoresAndOnlyWhatTheDialogShows) {
    preferences_.suspended = true;
    preferences_.windowState.fill(std::byte{3});
    for (const int leave : {IDCANCEL, IDOK}) {
        EXPECT_EQ(edit(
                      [&](HWND dialog) {
                          press(dialog, IDC_AUTOSTART);
                          SetDlgItemTextA(dialog, IDC_WAIT_TIME, "45");
                          press(dialog, IDC_RUN_BESIDE_FIRST);
                          test::pumpUntilIdle();
                          expectPreferences(true, false, 20);
                      },
                      leave),
                  leave == IDOK);
    }
    expectPreferences(false, true, 45);
    EXPECT_TRUE(preferences_.suspended);
    EXPECT_EQ(preferences_.windowState.front(), std::byte{3});
}

} // namespace
