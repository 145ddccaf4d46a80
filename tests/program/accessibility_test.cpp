// Every window of the real program for those who do not see it or use no mouse: a screen reader finds a name
// for each control that takes input, Tab comes to it, and no letter with Alt is two controls'.

#include "lib/base/stackalignment.h"
#include "resources/ids.h"
#include "tests/program/editordriver.h"
#include "tests/program/listdriver.h"
#include "tests/support/schedulekinds.h"
#include "tests/support/windowlooks.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <map>
#include <ostream>

using driver::EditorDriver;
using driver::SchedulerProcess;
using driver::textOf;
using driver::waitUntil;
using scheduler::ScheduledProject;
using scheduler::ScheduleKind;
using test::classOf;
using test::isButton;
using test::styleOf;

namespace {

constexpr int relinkFiles = 2; // its place in the list of run commands

bool takesInput(HWND window) {
    const std::string kind = classOf(window);
    return (kind == "button" && !isButton(window, BS_GROUPBOX)) || kind == "edit" || kind == "combobox" ||
           kind == "syslistview32" || kind == "systabcontrol32";
}

CALLED_BY_PLATFORM BOOL CALLBACK collectUsable(HWND window, LPARAM found) {
    if (IsWindowVisible(window) && IsWindowEnabled(window))
        reinterpret_cast<std::vector<HWND>*>(found)->push_back(window);
    return TRUE;
}

/// What of a window, its pages' controls included, the user can use now.
std::vector<HWND> usableIn(HWND window) {
    std::vector<HWND> found;
    EnumChildWindows(window, &collectUsable, reinterpret_cast<LPARAM>(&found));
    return found;
}

/// How a failure tells a control.
std::string told(HWND control) {
    return classOf(control) + " " + std::to_string(GetDlgCtrlID(control)) + " \"" + textOf(control) + "\"";
}

/// What a screen reader calls a control: its own text, or, where that is its content, the text directly
/// before it.
std::string nameOf(HWND control) {
    const std::string kind = classOf(control);
    if (kind != "edit" && kind != "combobox")
        return textOf(control);
    const HWND before = GetWindow(control, GW_HWNDPREV);
    return before && IsWindowVisible(before) && classOf(before) == "static" ? textOf(before) : "";
}

/// The letter that leads to a control, alone with Alt; 0 when it has none.
int accessKey(const std::string& text) {
    if (text.empty())
        return 0;
    for (auto mark = text.find('&'); mark < text.size() - 1; mark = text.find('&', mark + 2))
        if (text[mark + 1] != '&')
            return std::toupper(static_cast<unsigned char>(text[mark + 1]));
    return 0;
}

/// The radio buttons among which the arrows go, this one included.
std::vector<HWND> groupOf(HWND radioButton) {
    HWND first = radioButton;
    while (first && !(styleOf(first) & WS_GROUP))
        first = GetWindow(first, GW_HWNDPREV);
    std::vector<HWND> group;
    for (HWND next = first; next && (next == first || !(styleOf(next) & WS_GROUP));
         next = GetWindow(next, GW_HWNDNEXT))
        group.push_back(next);
    return group;
}

class Accessibility : public ::testing::Test {
protected:
    void SetUp() override {
        std::vector<ScheduledProject> entries(2);
        for (ScheduledProject& entry : entries) {
            entry.path = "run:backup.exe";
            entry.kind = ScheduleKind::Daily; // so that there is something to lose by leaving
        }
        driver::saveEntries(entries);
        ASSERT_TRUE(scheduler_.start());
    }

    void expectAccessible(HWND window) const {
        ASSERT_TRUE(window);
        SCOPED_TRACE(textOf(window));
        const std::vector<HWND> usable = usableIn(window);
        EXPECT_TRUE(std::ranges::any_of(usable, &takesInput));
        expectNames(usable);
        expectOwnAccessKeys(usable);
        expectTabReaches(usable);
    }

    /// The dialog that a command or a button has opened over `owner`.
    HWND dialogOver(HWND owner) const {
        const auto isOwned = [&] {
            const std::vector<HWND> dialogs = scheduler_.dialogs();
            return !dialogs.empty() && dialogs.front() != owner && scheduler_.focused() &&
                   isInside(dialogs.front());
        };
        return waitUntil(isOwned) ? scheduler_.dialogs().front() : nullptr;
    }

    SchedulerProcess scheduler_;
    EditorDriver editor_{scheduler_};

private:
    bool isInside(HWND dialog) const { return IsChild(dialog, scheduler_.focused()) != FALSE; }

    static void expectNames(const std::vector<HWND>& usable) {
        for (const HWND control : usable) {
            const bool isNamedByItsTabs = classOf(control) == "systabcontrol32";
            if (takesInput(control) && !isNamedByItsTabs) {
                EXPECT_NE(nameOf(control), "") << told(control);
            }
        }
    }

    static void expectOwnAccessKeys(const std::vector<HWND>& usable) {
        std::map<int, HWND> owners;
        for (const HWND control : usable) {
            const std::string kind = classOf(control);
            const int key = kind == "static" || kind == "button" ? accessKey(textOf(control)) : 0;
            if (key == 0)
                continue;
            const auto [owner, isNew] = owners.emplace(key, control);
            EXPECT_TRUE(isNew) << told(control) << " and " << told(owner->second);
        }
    }

    void expectTabReaches(const std::vector<HWND>& usable) const {
        const bool isAlone = std::ranges::count_if(usable, &takesInput) == 1;
        const std::vector<HWND> stops = isAlone ? std::vector{scheduler_.focused()} : tabStops();
        const auto isStop = [&](HWND control) { return std::ranges::find(stops, control) != stops.end(); };
        for (const HWND control : usable) {
            if (isButton(control, BS_AUTORADIOBUTTON)) {
                EXPECT_TRUE(std::ranges::any_of(groupOf(control), isStop)) << told(control);
            } else if (takesInput(control)) {
                EXPECT_TRUE(isStop(control)) << told(control);
            }
        }
    }

    /// Where the Tab key goes from the focus on, until it comes to a place for the second time.
    std::vector<HWND> tabStops() const {
        std::vector<HWND> stops;
        for (HWND stop = scheduler_.focused(); stop && std::ranges::find(stops, stop) == stops.end();
             stop = scheduler_.focused()) {
            stops.push_back(stop);
            PostMessageA(stop, WM_KEYDOWN, VK_TAB, 1);
            PostMessageA(stop, WM_KEYUP, VK_TAB, 1);
            EXPECT_TRUE(waitUntil([&] { return scheduler_.focused() && scheduler_.focused() != stop; }))
                << told(stop);
        }
        return stops;
    }
};

TEST_F(Accessibility, TheListHasANameAndTheKeyboard) {
    const HWND list = driver::ListDriver(scheduler_.window()).handle();
    EXPECT_NE(nameOf(list), "");
    EXPECT_TRUE(waitUntil([&] { return scheduler_.focused() == list; }));
    EXPECT_EQ(std::ranges::count_if(usableIn(scheduler_.window()), &takesInput), 1);
}

TEST_F(Accessibility, TheProjectPage) {
    ASSERT_TRUE(editor_.openAdd());
    expectAccessible(editor_.sheet());
    editor_.choose(IDC_RUN_COMMAND, relinkFiles);
    ASSERT_TRUE(waitUntil([&] { return !editor_.isEnabled(IDC_TIME_LIMIT); }));
    expectAccessible(editor_.sheet());
}

TEST_F(Accessibility, TheSchedulePageOfEachKind) {
    ASSERT_TRUE(editor_.openAdd());
    editor_.turnTo(IDD_SCHEDULE_PAGE);
    for (const ScheduleKind kind : test::allKinds) {
        SCOPED_TRACE(static_cast<int>(kind));
        ASSERT_TRUE(editor_.chooseKind(kind));
        const HWND button = editor_.item(test::buttonOf(kind));
        PostMessageA(editor_.sheet(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(button), TRUE);
        ASSERT_TRUE(waitUntil([&] { return scheduler_.focused() == button; }));
        expectAccessible(editor_.sheet());
    }
}

TEST_F(Accessibility, TheMessageOverTheEditor) {
    ASSERT_TRUE(editor_.openAdd());
    editor_.press(IDOK);
    expectAccessible(dialogOver(editor_.sheet()));
}

TEST_F(Accessibility, ThePreferencesOfEachPolicy) {
    scheduler_.command(IDM_PREFERENCES);
    const HWND dialog = dialogOver(nullptr);
    for (const int policy : {IDC_RUN_BESIDE_FIRST, IDC_WAIT_FOR_FIRST}) {
        SendDlgItemMessageA(dialog, policy, BM_CLICK, 0, 0);
        const bool hasMinutes = policy == IDC_WAIT_FOR_FIRST;
        ASSERT_TRUE(waitUntil(
            [&] { return (IsWindowEnabled(GetDlgItem(dialog, IDC_WAIT_TIME)) != FALSE) == hasMinutes; }));
        expectAccessible(dialog);
    }
}

TEST_F(Accessibility, TheAboutDialog) {
    scheduler_.command(IDM_ABOUT);
    expectAccessible(dialogOver(nullptr));
}

TEST_F(Accessibility, TheExitQuestion) {
    scheduler_.command(IDM_EXIT);
    expectAccessible(dialogOver(nullptr));
}

} // namespace
