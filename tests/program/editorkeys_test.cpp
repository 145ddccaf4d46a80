// The editor of the real program without a mouse: the order of the Tab key, and the letters with Alt.

#include "resources/ids.h"
#include "scheduler/ui/framework/browselayout.h"
#include "tests/program/editortest.h"

#include <gmock/gmock.h>

using driver::waitUntil;
using scheduler::ScheduleKind;
using testing::ElementsAreArray;

namespace {

constexpr int browseButton = framework::browseButtonIdOf(IDC_PROJECT_PATH);

class EditorKeys : public driver::AddInEditor {
protected:
    /// Where the Tab key leads from here on, up to the sheet's buttons.
    std::vector<int> tabStops() const {
        std::vector<int> stops;
        stops.push_back(editor_.focused());
        while (stops.back() != IDOK && stops.size() < 20) {
            const HWND from = scheduler_.focused();
            editor_.pressKey(VK_TAB);
            if (!waitUntil([&] { return scheduler_.focused() != from; }))
                break;
            stops.push_back(editor_.focused());
        }
        return stops;
    }
};

TEST_F(EditorKeys, TheFocusStartsInThePathAndTabGoesThroughThePageInReadingOrder) {
    EXPECT_TRUE(focusGoesTo(IDC_PROJECT_PATH));
    EXPECT_THAT(tabStops(), ElementsAreArray({IDC_PROJECT_PATH, browseButton, IDC_RUN_COMMAND,
                                              IDC_AUTOCONNECT, IDC_TIME_LIMIT, IDC_DISCONNECT, IDOK}));
}

TEST_F(EditorKeys, TabGoesFromTheKindThroughItsFields) {
    editor_.turnTo(IDD_SCHEDULE_PAGE);
    const std::vector<int> fieldsOfKinds[] = {
        {IDC_AFTER_PROJECT, IDC_AFTER_DELAY},
        {IDC_STARTUP_DELAY},
        {IDC_HOURLY_MINUTE},
        {IDC_DAILY_TIME, IDC_MONDAY, IDC_TUESDAY, IDC_WEDNESDAY, IDC_THURSDAY, IDC_FRIDAY, IDC_SATURDAY,
         IDC_SUNDAY},
        {IDC_MONTHLY_DAY, IDC_MONTHLY_TIME},
        {IDC_ONCE_TIME},
    };
    for (int kind = 0; kind < 6; ++kind) {
        const int button = IDC_KIND_AFTER_PROJECT + kind;
        ASSERT_TRUE(editor_.chooseKind(static_cast<ScheduleKind>(kind)));
        ASSERT_NO_FATAL_FAILURE(moveFocusTo(button));
        std::vector<int> wanted;
        wanted.push_back(button);
        for (const int field : fieldsOfKinds[kind])
            wanted.push_back(field);
        wanted.push_back(IDOK);
        EXPECT_THAT(tabStops(), ElementsAreArray(wanted));
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
    for (int kind = 1; kind < 6; ++kind) {
        editor_.pressKey(VK_DOWN);
        EXPECT_TRUE(focusGoesTo(IDC_KIND_AFTER_PROJECT + kind));
        EXPECT_TRUE(waitUntil([&] { return editor_.isChecked(IDC_KIND_AFTER_PROJECT + kind); }));
    }
}

} // namespace
