// The time that the editor offers for a single run, in the real program, whose clock runs ten times as fast.

#include "lib/base/dateparsing.h"
#include "resources/ids.h"
#include "tests/program/editordriver.h"

#include <gtest/gtest.h>

#include <chrono>

using base::TimeSpan;
using base::TimeValue;
using driver::waitUntil;
using scheduler::ScheduleKind;

namespace {

// By the fast clock.
constexpr std::chrono::minutes limit(30);

TEST(SingleRunInEditor, IsOfferedAheadHoweverLongAgoTheEditorWasOpened) {
    driver::saveEntries({});
    driver::SchedulerProcess scheduler;
    driver::EditorDriver editor(scheduler);
    ASSERT_TRUE(scheduler.start());
    ASSERT_TRUE(editor.openAdd());
    editor.turnTo(IDD_SCHEDULE_PAGE);
    ASSERT_TRUE(editor.chooseKind(ScheduleKind::Daily));
    const TimeValue later = TimeValue::now() + TimeSpan::fromMinutes(2);
    ASSERT_TRUE(waitUntil([&] { return TimeValue::now() > later; }, limit));
    ASSERT_TRUE(editor.chooseKind(ScheduleKind::Once));
    // What was offered with the other kind was for a minute or so after it was chosen.
    EXPECT_TRUE(waitUntil([&] { return base::parseDateTime(editor.text(IDC_ONCE_TIME)) >= later; }, limit))
        << editor.text(IDC_ONCE_TIME);
}

} // namespace
