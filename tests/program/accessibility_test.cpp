// In every window, each control that takes input has a name for screen readers and can be reached with Tab.
// No two controls share an access key.

#include "lib/base/stackalignment.h"
#include "resources/ids.h"
#include "tests/program/editordriver.h"
#include "tests/program/programtest.h"
#include "tests/support/schedulekinds.h"
#include "tests/support/windowlooks.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <map>
#include <ostream>

using driver::EditorDriver;
using driver::textOf;
using driver::waitUntil;
using scheduler::ScheduleKind;
using test::classOf;
using test::isButton;
using test::styleOf;

namespace {

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

std::vector<HWND> usableIn(HWND window) {
    std::vector<HWND> found;
    EnumChildWindows(window, &collectUsable, reinterpret_cast<LPARAM>(&found));
    return found;
}

std::string describe(HWND control) {
    return classOf(control) + " " + std::to_string(GetDlgCtrlID(control)) + " \"" + textOf(control) + "\"";
}

/// The name for screen readers: for an edit or combo box, the static text before it; otherwise its own text.
std::string nameOf(HWND control) {
    const std::string kind = classOf(control);
    if (kind != "edit" && kind != "combobox")
        return textOf(control);
    const HWND before = GetWindow(control, GW_HWNDPREV);
    return before && IsWindowVisible(before) && classOf(before) == "static" ? textOf(before) : "";
}

int accessKey(const std::string& text) {
    if (text.empty())
        return 0;
    for (auto mark = text.find('&'); mark < text.size() - 1; mark = text.find('&', mark + 2))
        if (text[mark + 1] != '&')
            return std::toupper(static_cast<unsigned char>(text[mark + 1]));
    return 0;
}

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

class Accessibility : public driver::ProgramTest {
protected:
    void SetUp() override {
        ProgramTest::SetUp();
        startWith({driver::pendingEntry(), driver::pendingEntry()});
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

    HWND dialogOver(HWND owner) const {
        const auto isOwned = [&] {
            const std::vector<HWND> dialogs = scheduler_.dialogs();
            return !dialogs.empty() && dialogs.front() != owner &&
                   IsChild(dialogs.front(), scheduler_.focused()) != FALSE;
        };
        return waitUntil(isOwned) ? scheduler_.dialogs().front() : nullptr;
    }

    EditorDriver editor_{scheduler_};

private:
    static void expectNames(const std::vector<HWND>& usable) {
        for (const HWND control : usable) {
            const bool isNamedByItsTabs = classOf(control) == "systabcontrol32";
            if (takesInput(control) && !isNamedByItsTabs) {
                EXPECT_NE(nameOf(control), "") << describe(control);
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
            EXPECT_TRUE(isNew) << describe(control) << " and " << describe(owner->second);
        }
    }

    void expectTabReaches(const std::vector<HWND>& usable) const {
        const bool isAlone = std::ranges::count_if(usable, &takesInput) == 1;
        const std::vector<HWND> stops = isAlone ? std::vector{scheduler_.focused()} : editor_.tabStops();
        const auto isStop = [&](HWND control) { return std::ranges::find(stops, control) != stops.end(); };
        for (const HWND control : usable) {
            if (isButton(control, BS_AUTORADIOBUTTON)) {
                EXPECT_TRUE(std::ranges::any_of(groupOf(control), isStop)) << describe(control);
            } else if (takesInput(control)) {
                EXPECT_TRUE(isStop(control)) << describe(control);
            }
        }
    }
};

TEST_F(Accessibility, TheListHasANameAndTheFocus) {
    EXPECT_NE(nameOf(list().handle()), "");
    EXPECT_TRUE(waitUntil([&] { return scheduler_.focused() == list().handle(); }));
    EXPECT_EQ(std::ranges::count_if(usableIn(window()), &takesInput), 1);
}

TEST_F(Accessibility, TheProjectPageIsUsableByKeyboard) {
    ASSERT_TRUE(editor_.openAdd());
    expectAccessible(editor_.sheet());
    editor_.choose(IDC_RUN_COMMAND, 2); // relink
    ASSERT_TRUE(waitUntil([&] { return !editor_.isEnabled(IDC_TIME_LIMIT); }));
    expectAccessible(editor_.sheet());
}

TEST_F(Accessibility, TheSchedulePageIsUsableByKeyboard) {
    ASSERT_TRUE(editor_.openAdd());
    editor_.turnTo(IDD_SCHEDULE_PAGE);
    for (const ScheduleKind kind : test::allKinds) {
        SCOPED_TRACE(static_cast<int>(kind));
        ASSERT_TRUE(editor_.chooseKind(kind));
        ASSERT_TRUE(editor_.moveFocusTo(test::buttonOf(kind)));
        expectAccessible(editor_.sheet());
    }
}

TEST_F(Accessibility, AMessageBoxIsUsableByKeyboard) {
    ASSERT_TRUE(editor_.openAdd());
    editor_.press(IDOK);
    expectAccessible(dialogOver(editor_.sheet()));
}

TEST_F(Accessibility, ThePreferencesAreUsableByKeyboard) {
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

TEST_F(Accessibility, AboutAndTheExitQuestionAreUsableByKeyboard) {
    for (const auto& [command, button] : {std::pair{IDM_ABOUT, IDOK}, {IDM_EXIT, IDNO}}) {
        scheduler_.command(command);
        const HWND dialog = dialogOver(nullptr);
        expectAccessible(dialog);
        driver::SchedulerProcess::press(dialog, button);
        ASSERT_TRUE(waitUntil([&] { return !IsWindow(dialog); }));
    }
}

} // namespace
