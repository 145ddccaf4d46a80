// The editor of the real program without a mouse: the order of the Tab key, and the letters with Alt.

#include "resources/ids.h"
#include "scheduler/ui/framework/browselayout.h"
#include "tests/program/editortest.h"
#include "tests/support/schedulekinds.h"

#include <gmock/gmock.h>

using driver::waitUntil;
using scheduler::ScheduleKind;
using test::buttonOf;
using testing::ElementsAreArray;

namespace {

constexpr int browseButton = framework::browseButtonIdOf(IDC_PROJECT_PATH);

class EditorKeys : public driver::AddInEditor {
protected:
    /// Where the Tab key leads from the focus on, until it comes to the sheet's buttons.
    std::vector<int> tabStops() const {
        std::vector<int> stops;
        while (stops.size() < 20) {
            const HWND from = scheduler_.focused();
            editor_.pressKey(VK_TAB);
            if (!waitUntil([&] { return scheduler_.focused() && scheduler_.focused() != from; }) ||
                editor_.focused() == IDOK)
                break;
            stops.push_back(editor_.focused());
        }
        return stops;
    }
};

TEST_F(EditorKeys, TheFocusStartsInThePathAndTabGoesThroughThePageInReadingOrder) {
    EXPECT_TRUE(focusGoesTo(IDC_PROJECT_PATH));
    EXPECT_THAT(tabStops(), ElementsAreArray({browseButton, IDC_RUN_COMMAND, IDC_AUTOCONNECT, IDC_TIME_LIMIT,
                                              IDC_DISCONNECT}));
}

TEST_F(EditorKeys, TabGoesFromTheKindThroughItsFields) {
    editor_.turnTo(IDD_SCHEDULE_PAGE);
    for (const ScheduleKind kind : test::allKinds) {
        ASSERT_TRUE(editor_.chooseKind(kind));
        ASSERT_NO_FATAL_FAILURE(moveFocusTo(buttonOf(kind)));
        EXPECT_THAT(tabStops(), ElementsAreArray(test::controlsOf(kind).fields));
    }
}

TEST_F(EditorKeys, TheLettersOfTheProjectPage) {
    for (const auto& [letter, id] : {std::pair{'r', IDC_RUN_COMMAND},
                                     {'a', IDC_AUTOCONNECT},
                                     {'t', IDC_TIME_LIMIT},
                                     {'p', IDC_PROJECT_PATH}}) {
        editor_.pressWithAlt(letter);
        EXPECT_TRUE(focusGoesTo(id)) << letter;
    }
    editor_.pressWithAlt('d');
    EXPECT_TRUE(waitUntil([&] { return editor_.isChecked(IDC_DISCONNECT); }));
    editor_.pressWithAlt('b');
    EXPECT_TRUE(waitUntil([] { return FindWindowA("#32770", "Browse") != nullptr; }));
}

TEST_F(EditorKeys, TheLettersOfTheSchedulePage) {
    editor_.turnTo(IDD_SCHEDULE_PAGE);
    ASSERT_TRUE(focusGoesTo(IDC_KIND_AFTER_PROJECT)) << editor_.focused();
    struct Letter {
        char ofKind;
        int button;
        char ofField;
        int field;
    };
    for (const Letter& letter : {Letter{'s', IDC_KIND_STARTUP, 'a', IDC_STARTUP_DELAY},
                                 Letter{'h', IDC_KIND_HOURLY, 'a', IDC_HOURLY_MINUTE},
                                 Letter{'d', IDC_KIND_DAILY, 'a', IDC_DAILY_TIME},
                                 Letter{'m', IDC_KIND_MONTHLY, 'o', IDC_MONTHLY_DAY},
                                 Letter{'m', IDC_KIND_MONTHLY, 'a', IDC_MONTHLY_TIME},
                                 Letter{'j', IDC_KIND_ONCE, 'a', IDC_ONCE_TIME},
                                 Letter{'w', IDC_KIND_AFTER_PROJECT, 'a', IDC_AFTER_DELAY}}) {
        editor_.pressWithAlt(letter.ofKind);
        EXPECT_TRUE(focusGoesTo(letter.button)) << letter.ofKind;
        EXPECT_TRUE(waitUntil([&] { return editor_.isChecked(letter.button); })) << letter.ofKind;
        ASSERT_TRUE(waitUntil([&] { return editor_.isShown(letter.field); }));
        editor_.pressWithAlt(letter.ofField);
        EXPECT_TRUE(focusGoesTo(letter.field)) << letter.ofKind << letter.ofField;
    }
}

TEST_F(EditorKeys, TheArrowsGoThroughTheKinds) {
    editor_.turnTo(IDD_SCHEDULE_PAGE);
    ASSERT_TRUE(focusGoesTo(IDC_KIND_AFTER_PROJECT));
    for (const ScheduleKind kind : test::allKinds) {
        EXPECT_TRUE(focusGoesTo(buttonOf(kind)));
        EXPECT_TRUE(waitUntil([&] { return editor_.isChecked(buttonOf(kind)); }));
        editor_.pressKey(VK_DOWN);
    }
}

} // namespace
