// The clock is set while the program runs. Next runs stay as they are: those passed over run once, at once;
// those that are ahead again wait.

#include "resources/ids.h"
#include "tests/program/editordriver.h"
#include "tests/program/programtest.h"
#include "tests/program/settableclock.h"
#include "tests/program/witnessdriver.h"

#include <gmock/gmock.h>

using base::TimeSpan;
using base::TimeValue;
using driver::lastRunColumn;
using driver::nextRunColumn;
using driver::sleeping;
using driver::waitUntil;
using scheduler::ScheduledProject;
using scheduler::ScheduleKind;
using testing::StartsWith;

namespace {

constexpr TimeSpan hour = TimeSpan::fromMinutes(60);
constexpr TimeSpan day = TimeSpan::fromDays(1);
constexpr TimeSpan year = TimeSpan::fromDays(365);

enum Position : std::size_t { hourly, daily, monthly, once, count };

class ClockSet : public driver::ProgramTest {
protected:
    void SetUp() override {
        ProgramTest::SetUp();
        clock_.moveTo(begin_); // the tests before have set it, too
    }

    void startWithEachKind() {
        base::writeNumber(HKEY_CURRENT_USER, driver::stateKey + "\\RunMultiple", 1);
        std::vector<ScheduledProject> entries(count, sleeping(spider_.makeProject("a.kra")));
        entries[hourly].kind = ScheduleKind::Hourly;
        entries[hourly].minutes = 30;
        entries[daily].kind = ScheduleKind::Daily;
        entries[monthly].kind = ScheduleKind::Monthly;
        entries[monthly].dayOfMonth = 20;
        entries[once].kind = ScheduleKind::Once;
        entries[daily].time = entries[monthly].time = begin_ + TimeSpan::fromMinutes(5 * 60);
        entries[once].time = begin_ + TimeSpan::fromDays(3);
        startWith(entries, "/s");
    }

    void moveBy(TimeSpan span) { clock_.moveTo(TimeValue::now() + span); }

    using Runs = std::vector<std::size_t>;

    /// How often each entry has run once two ticks have started all that is due. A tick may pause in between,
    /// so entries that are still due are waited for, too.
    Runs runsAfterTwoTicks() {
        scheduler_.tick();
        scheduler_.tick();
        EXPECT_TRUE(waitUntil([&] {
            for (std::size_t entry = 0; entry < count; ++entry) {
                const std::string next = list().cell(static_cast<int>(entry), nextRunColumn);
                if (next == "Running" || next == "Now")
                    return false;
            }
            return true;
        }));
        saved_ = driver::savedSchedule();
        EXPECT_EQ(saved_.size(), std::size_t{count});
        for (std::size_t entry = 0; entry < count; ++entry)
            if (saved_[entry].lastRun != lastRuns_[entry]) {
                lastRuns_[entry] = saved_[entry].lastRun;
                ++runs_[entry];
            }
        return runs_;
    }
    TimeValue nextRun(Position entry) const { return saved_[entry].nextRun; }

    driver::SettableClock clock_;
    driver::SampleSpider spider_;
    const TimeValue begin_ = TimeValue::fromLocal(2026, 5, 12, 10, 0, 0, -1);
    std::vector<ScheduledProject> saved_;
    std::vector<TimeValue> lastRuns_ = std::vector<TimeValue>(count);
    Runs runs_ = Runs(count);
};

TEST_F(ClockSet, ForwardsRunsOnceWhatWasPassedOver) {
    startWithEachKind();
    EXPECT_EQ(runsAfterTwoTicks(), (Runs{0, 0, 0, 0}));
    moveBy(hour);
    EXPECT_EQ(runsAfterTwoTicks(), (Runs{1, 0, 0, 0}));
    EXPECT_EQ(nextRun(hourly), begin_ + TimeSpan::fromMinutes(90));
    moveBy(day);
    EXPECT_EQ(runsAfterTwoTicks(), (Runs{2, 1, 0, 0}));
    moveBy(year);
    EXPECT_EQ(runsAfterTwoTicks(), (Runs{3, 2, 1, 1}));
    EXPECT_EQ(nextRun(once), TimeValue::never());
}

TEST_F(ClockSet, BackwardsWaitsUntilTheNextRunsComeAgain) {
    startWithEachKind();
    moveBy(hour);
    ASSERT_EQ(runsAfterTwoTicks(), (Runs{1, 0, 0, 0}));
    const TimeValue next = nextRun(hourly);
    for (const TimeSpan step : {hour, day, year}) {
        clock_.moveTo(TimeValue::now() - step);
        EXPECT_EQ(runsAfterTwoTicks(), (Runs{1, 0, 0, 0}));
        EXPECT_EQ(nextRun(hourly), next);
    }
    clock_.moveTo(next);
    EXPECT_EQ(runsAfterTwoTicks(), (Runs{2, 0, 0, 0}));
    EXPECT_EQ(nextRun(hourly), next + hour);
}

TEST_F(ClockSet, BackwardsIsCaughtUpWithByResuming) {
    startWithEachKind();
    clock_.moveTo(begin_ - day);
    ASSERT_EQ(runsAfterTwoTicks(), (Runs{0, 0, 0, 0}));
    carryOut(IDM_SUSPEND);
    carryOut(IDM_SUSPEND);
    ASSERT_TRUE(scheduler_.exit());
    const auto saved = driver::savedSchedule();
    ASSERT_EQ(saved.size(), std::size_t{count});
    EXPECT_EQ(saved[hourly].nextRun, begin_ - day + TimeSpan::fromMinutes(30));
    EXPECT_EQ(saved[daily].nextRun, begin_ - day + TimeSpan::fromMinutes(5 * 60));
}

TEST_F(ClockSet, MidnightTurnsTomorrowIntoTodayAndTodayIntoYesterdayByItself) {
    ScheduledProject entry = sleeping("C:\\Sites\\news.kra");
    entry.kind = ScheduleKind::Once;
    entry.time = begin_ + day;
    entry.lastRun = begin_ - hour;
    startWith({entry});
    const driver::WitnessDriver witness(window(), list().handle());
    ASSERT_TRUE(witness.isThere());
    EXPECT_THAT(list().cell(0, nextRunColumn), StartsWith("tomorrow at "));
    EXPECT_THAT(list().cell(0, lastRunColumn), StartsWith("today at "));
    driver::WitnessDriver::draw(list().handle()); // so that none is left to be painted

    const LONG before = witness.paints();
    clock_.moveTo(begin_ + TimeSpan::fromMinutes(14 * 60));
    ASSERT_TRUE(waitUntil([&] { return witness.paints() > before; })) << "nothing was painted";
    EXPECT_THAT(list().cell(0, nextRunColumn), StartsWith("today at "));
    EXPECT_THAT(list().cell(0, lastRunColumn), StartsWith("yesterday at "));
}

TEST_F(ClockSet, ASingleRunIsOfferedAheadHoweverLongAgoTheEditorWasOpened) {
    startWith({});
    driver::EditorDriver editor(scheduler_);
    ASSERT_TRUE(editor.openAdd());
    editor.turnTo(IDD_SCHEDULE_PAGE);
    ASSERT_TRUE(editor.chooseKind(ScheduleKind::Daily));
    clock_.moveTo(begin_ + day);
    ASSERT_TRUE(editor.chooseKind(ScheduleKind::Once));
    EXPECT_TRUE(waitUntil([&] { return editor.text(IDC_ONCE_TIME).starts_with("05/13/26 10:"); }))
        << editor.text(IDC_ONCE_TIME);
}

} // namespace
