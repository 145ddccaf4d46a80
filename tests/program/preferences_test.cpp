// The Preferences and About dialogs of the real program, and what the preferences change.

#include "lib/base/processes.h"
#include "lib/base/trayicon.h"
#include "resources/ids.h"
#include "tests/program/listdriver.h"
#include "tests/program/programtest.h"

#include <functional>
#include <optional>
#include <ostream>

using driver::waitUntil;
using scheduler::ScheduledProject;
using scheduler::ScheduleKind;

namespace {

/// The preferences of the dialog, as the dialog shows them or the registry has them.
struct Settings {
    bool autostart = true;
    bool runMultiple = false;
    std::string waitTime = "20";

    bool operator==(const Settings&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Settings& settings) {
    return out << (settings.autostart ? "autostart, " : "no autostart, ")
               << (settings.runMultiple ? "run multiple, " : "wait ") << settings.waitTime;
}

/// What the program has saved; nothing when a value is missing or odd.
std::optional<Settings> saved() {
    const auto read = [](const char* name) {
        return base::getNumber(HKEY_CURRENT_USER, driver::stateKey + "\\" + name, 99999);
    };
    const auto autostart = read("Autostart");
    const auto runMultiple = read("RunMultiple");
    const auto waitTime = read("WaitTime");
    if (autostart > 1 || runMultiple > 1 || waitTime == 99999)
        return std::nullopt;
    return Settings{autostart == 1, runMultiple == 1, std::to_string(waitTime)};
}

class PreferencesAndAbout : public driver::ProgramTest {
protected:
    /// The dialog that a command opens.
    void open(int command) {
        scheduler_.command(command);
        ASSERT_TRUE(waitUntil([&] { return scheduler_.messageBox() != nullptr; }));
        dialog_ = scheduler_.messageBox();
        EXPECT_FALSE(IsWindowEnabled(scheduler_.window()));
    }

    HWND item(int id) const { return GetDlgItem(dialog_, id); }
    void click(int id) const { SendMessageA(item(id), BM_CLICK, 0, 0); }
    bool isChecked(int id) const { return SendMessageA(item(id), BM_GETCHECK, 0, 0) == BST_CHECKED; }

    Settings shown() const {
        return {isChecked(IDC_AUTOSTART), isChecked(IDC_RUN_BESIDE_FIRST),
                driver::textOf(item(IDC_WAIT_TIME))};
    }

    void typeMinutes(const std::string& digits) const {
        SendMessageA(item(IDC_WAIT_TIME), EM_SETSEL, 0, -1);
        for (const char digit : digits)
            PostMessageA(item(IDC_WAIT_TIME), WM_CHAR, static_cast<WPARAM>(digit), 1);
    }

    bool minutesBecome(const std::string& text) const {
        return waitUntil([&] { return driver::textOf(item(IDC_WAIT_TIME)) == text; });
    }

    bool minutesBecomeEnabled(bool enabled) const {
        return waitUntil([&] { return (IsWindowEnabled(item(IDC_WAIT_TIME)) != FALSE) == enabled; });
    }

    /// Waits until the dialog is gone and its owner can be used again.
    bool closes() const {
        return waitUntil([&] { return !IsWindow(dialog_) && IsWindowEnabled(scheduler_.window()); });
    }

    HWND dialog_ = nullptr;
};

TEST_F(PreferencesAndAbout, BothPoliciesAreSavedByOkAndShownByTheNextStart) {
    for (const Settings& wanted : {Settings{false, true, "45"}, Settings{true, false, "1440"}}) {
        ASSERT_TRUE(scheduler_.start());
        open(IDM_PREFERENCES);
        typeMinutes(wanted.waitTime);
        ASSERT_TRUE(minutesBecome(wanted.waitTime));
        if (shown().autostart != wanted.autostart)
            click(IDC_AUTOSTART);
        click(wanted.runMultiple ? IDC_RUN_BESIDE_FIRST : IDC_WAIT_FOR_FIRST);
        EXPECT_TRUE(minutesBecomeEnabled(!wanted.runMultiple));
        EXPECT_EQ(shown(), wanted);
        click(IDOK);
        ASSERT_TRUE(closes());
        EXPECT_TRUE(waitUntil([&] { return saved() == wanted; }));
        scheduler_.kill();

        ASSERT_TRUE(scheduler_.start());
        open(IDM_PREFERENCES);
        EXPECT_EQ(shown(), wanted);
        EXPECT_TRUE(minutesBecomeEnabled(!wanted.runMultiple));
        scheduler_.kill();
    }
}

TEST_F(PreferencesAndAbout, TheMinutesFollowTheCheckedPolicy) {
    ASSERT_TRUE(scheduler_.start());
    open(IDM_PREFERENCES);
    EXPECT_TRUE(minutesBecomeEnabled(true));
    click(IDC_RUN_BESIDE_FIRST);
    EXPECT_TRUE(minutesBecomeEnabled(false));
    click(IDC_WAIT_FOR_FIRST);
    EXPECT_TRUE(minutesBecomeEnabled(true));
}

TEST_F(PreferencesAndAbout, Typing5000ShowsAndSaves1440WithTheFourthDigit) {
    ASSERT_TRUE(scheduler_.start());
    open(IDM_PREFERENCES);
    typeMinutes("500");
    ASSERT_TRUE(minutesBecome("500"));
    PostMessageA(item(IDC_WAIT_TIME), WM_CHAR, '0', 1);
    EXPECT_TRUE(minutesBecome("1440"));
    click(IDOK);
    ASSERT_TRUE(closes());
    EXPECT_TRUE(waitUntil([] { return saved() == Settings{true, false, "1440"}; }));
}

TEST_F(PreferencesAndAbout, CancelByButtonEscapeAndCaptionLeavesEverything) {
    const std::function<void(HWND)> ways[] = {
        [](HWND dialog) { SendDlgItemMessageA(dialog, IDCANCEL, BM_CLICK, 0, 0); },
        [](HWND dialog) { PostMessageA(GetDlgItem(dialog, IDC_AUTOSTART), WM_KEYDOWN, VK_ESCAPE, 1); },
        [](HWND dialog) { PostMessageA(dialog, WM_SYSCOMMAND, SC_CLOSE, 0); },
    };
    ASSERT_TRUE(scheduler_.start());
    for (const auto& leave : ways) {
        open(IDM_PREFERENCES);
        EXPECT_EQ(shown(), Settings());
        typeMinutes("45");
        ASSERT_TRUE(minutesBecome("45"));
        click(IDC_AUTOSTART);
        click(IDC_RUN_BESIDE_FIRST);
        EXPECT_EQ(shown(), (Settings{false, true, "45"}));
        leave(dialog_);
        ASSERT_TRUE(closes());
        EXPECT_EQ(saved(), std::nullopt) << "there is nothing to save yet";
    }
    // What it still has in memory is what it leaves at its end.
    scheduler_.command(IDM_EXIT);
    ASSERT_TRUE(scheduler_.waitForExit());
    EXPECT_EQ(saved(), Settings());
}

TEST_F(PreferencesAndAbout, TheAutostartPreferenceRulesWhatExitRegisters) {
    for (const bool wanted : {false, true}) {
        ASSERT_TRUE(scheduler_.start());
        open(IDM_PREFERENCES);
        click(IDC_AUTOSTART);
        EXPECT_EQ(shown().autostart, wanted);
        click(IDOK);
        ASSERT_TRUE(closes());
        scheduler_.command(IDM_EXIT);
        ASSERT_TRUE(scheduler_.waitForExit());
        EXPECT_NE(base::getString(HKEY_LOCAL_MACHINE, driver::autostartValue).empty(), wanted);
    }
}

TEST_F(PreferencesAndAbout, TheEngineObeysAChangedPolicyAtOnce) {
    const driver::SampleSpider spider;
    const auto atStartup = [&](const std::string& fileName, const std::string& lines) {
        ScheduledProject entry;
        entry.path = spider.makeProject(fileName, lines);
        entry.kind = ScheduleKind::AtStartup;
        return entry;
    };
    driver::saveEntries({atStartup("slow.kra", "seconds=600\n"), atStartup("quick.kra", "ms=100\n")});
    ASSERT_TRUE(scheduler_.start("/s"));
    SendMessageA(scheduler_.window(), base::WM_TRAY_NOTIFY, 0, WM_LBUTTONDBLCLK);
    ASSERT_TRUE(waitUntil([&] { return spider.logged("slow.kra") == 1; }));
    constexpr WPARAM engineTimer = 1;
    for (int tick = 0; tick < 2; ++tick)
        SendMessageA(scheduler_.window(), WM_TIMER, engineTimer, 0);
    const driver::ListDriver list(scheduler_.window());
    EXPECT_EQ(list.cell(0, driver::nextRunColumn), "Running");
    EXPECT_NE(list.cell(1, driver::nextRunColumn), "Running") << "it waits for the first";
    EXPECT_EQ(spider.logged("quick.kra"), 0U);

    open(IDM_PREFERENCES);
    click(IDC_RUN_BESIDE_FIRST);
    click(IDOK);
    EXPECT_TRUE(waitUntil([&] { return spider.logged("quick.kra") >= 1; }));
    scheduler_.kill();
    base::runProcessAndWait("taskkill /f /im spider.exe", SW_HIDE, "", INFINITE);
}

TEST_F(PreferencesAndAbout, AboutNamesTheProgramAndItsVersionUntilOk) {
    ASSERT_TRUE(scheduler_.start());
    open(IDM_ABOUT);
    EXPECT_EQ(driver::textOf(dialog_), "About the Corvane Scheduler");
    EXPECT_NE(FindWindowExA(dialog_, nullptr, "Static", "Corvane Scheduler, version 1.34"), nullptr);
    click(IDOK);
    EXPECT_TRUE(closes());
    EXPECT_TRUE(scheduler_.isRunning());
}

} // namespace
