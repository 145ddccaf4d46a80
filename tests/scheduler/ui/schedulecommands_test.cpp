#include "scheduler/ui/schedulecommands.h"
#include "tests/support/fakeclock.h"
#include "tests/support/fakeenginelistener.h"
#include "tests/support/fakeoutcomesource.h"
#include "tests/support/fakerunlauncher.h"
#include "tests/support/fakerunlistener.h"
#include "tests/support/fakeschedulestore.h"
#include "tests/support/mockusermessages.h"
#include "tests/support/redrawlog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using base::TimeSpan;
using base::TimeValue;
using scheduler::ScheduledProject;
using scheduler::ScheduleKind;
using testing::ElementsAre;
using testing::IsEmpty;

class ScheduleCommands : public testing::Test {
protected:
    static ScheduledProject hourly(const std::string& path, bool disabled = false) {
        ScheduledProject entry;
        entry.path = path;
        entry.kind = ScheduleKind::Hourly;
        entry.disabled = disabled;
        entry.nextRun = TimeValue(7);
        return entry;
    }
    static ScheduledProject following(std::int32_t position) {
        ScheduledProject entry = hourly("follower.kra");
        entry.kind = ScheduleKind::AfterProject;
        entry.afterIndex = position;
        return entry;
    }

    void expectOneRedrawAndSaves(std::size_t saves) {
        EXPECT_THAT(log_, ElementsAre("redraw"));
        EXPECT_EQ(store_.saved.size(), saves);
        log_.clear();
        store_.saved.clear();
    }

    const TimeValue now_ = TimeValue::fromLocal(2026, 5, 20, 12, 30, 0, -1);
    const TimeValue onTheHour_ = TimeValue::fromLocal(2026, 5, 20, 13, 0, 0, -1);
    test::FakeClock clock_{now_};
    test::EventLog log_;
    test::FakeRunLauncher launcher_{log_};
    test::FakeOutcomeSource outcomes_{log_};
    test::FakeEngineListener listener_{log_};
    test::FakeRunListener runs_;
    testing::NiceMock<test::MockUserMessages> messages_;
    test::FakeScheduleStore store_;
    scheduler::ScheduleList schedule_;
    scheduler::RunPolicy policy_;
    scheduler::SchedulerEngine engine_{
        schedule_, policy_, {clock_, launcher_, outcomes_, store_, messages_, listener_, runs_}};
    std::vector<std::string> opened_;
    scheduler::ScheduleCommands commands_{schedule_, engine_, store_, clock_,
                                          [this](const std::string& path) { opened_.push_back(path); }};
    test::RedrawLog redraws_{schedule_, log_};
};

TEST_F(ScheduleCommands, DoNothingWithoutASelectionOrAProject) {
    schedule_.assign({hourly("a.kra")});
    log_.clear();
    commands_.toggle({});
    commands_.remove({});
    commands_.runNow({});
    commands_.open({});
    commands_.addDropped({});
    commands_.addDropped({"C:\\S\\b.txt"});
    EXPECT_EQ(schedule_.size(), 1U);
    EXPECT_EQ(schedule_[0].nextRun, TimeValue(7));
    EXPECT_THAT(log_, IsEmpty());
    EXPECT_THAT(store_.saved, IsEmpty());
    EXPECT_THAT(opened_, IsEmpty());
}

TEST_F(ScheduleCommands, TogglingInvertsEachSelectedEntry) {
    schedule_.assign({hourly("a.kra", false), hourly("b.kra", true), hourly("c.kra", false)});
    log_.clear();
    commands_.toggle({0, 1});
    EXPECT_EQ(schedule_[0].disabled, 1);
    EXPECT_EQ(schedule_[1].disabled, 0);
    EXPECT_EQ(schedule_[2].disabled, 0);
    EXPECT_EQ(schedule_[0].nextRun, onTheHour_) << "computed for a disabled entry, too";
    EXPECT_EQ(schedule_[1].nextRun, onTheHour_);
    EXPECT_EQ(schedule_[2].nextRun, TimeValue(7)) << "not selected";
    expectOneRedrawAndSaves(1);
}

TEST_F(ScheduleCommands, RemovalKeepsChainsOfEntries) {
    schedule_.assign({hourly("a.kra"), hourly("b.kra"), following(1), following(2)});
    log_.clear();
    commands_.remove({0, 2});
    ASSERT_EQ(schedule_.size(), 2U);
    EXPECT_EQ(schedule_[0].path, "b.kra");
    EXPECT_EQ(schedule_[1].afterIndex, 0);
    expectOneRedrawAndSaves(1);
}

TEST_F(ScheduleCommands, AfterRemovalAFollowerOfTheFirstEntryFollowsTheNewFirstEntry) {
    schedule_.assign({hourly("a.kra"), hourly("b.kra"), hourly("c.kra"), following(1)});
    commands_.edit(2, following(0));
    commands_.remove({0});
    EXPECT_EQ(schedule_[1].kind, ScheduleKind::AfterProject);
    EXPECT_EQ(schedule_[1].afterIndex, 0);
    commands_.remove({0});
    EXPECT_EQ(schedule_[0].kind, ScheduleKind::AtStartup) << "it would follow itself";
    EXPECT_EQ(schedule_[0].afterIndex, 0);
    EXPECT_EQ(schedule_[1].afterIndex, 0);
}

TEST_F(ScheduleCommands, ARunningEntryCanBeRemovedAndItsEndIsIgnored) {
    schedule_.assign({hourly("a.kra")});
    commands_.runNow({0});
    commands_.remove({0});
    EXPECT_FALSE(engine_.onRunFinished(1));
}

TEST_F(ScheduleCommands, RunNowStartsSelectedEntriesEvenIfDisabledOrSuspended) {
    schedule_.assign({hourly("a.kra", true), hourly("b.kra"), hourly("run:c")});
    engine_.setSuspended(true);
    commands_.runNow({0, 2});
    ASSERT_EQ(launcher_.launched.size(), 2U);
    EXPECT_EQ(launcher_.launched[0].number, 1);
    EXPECT_EQ(launcher_.launched[1].number, 2);
    EXPECT_EQ(schedule_[1].running, 0);
}

TEST_F(ScheduleCommands, RunNowReportsEachEntryThatCannotStart) {
    schedule_.assign({hourly("a.kra"), hourly("b.kra")});
    launcher_.threadsStart = false;
    EXPECT_CALL(messages_, showNotice("A system error prevented the project from running.")).Times(2);
    commands_.runNow({0, 1});
}

TEST_F(ScheduleCommands, DroppedProjectsAreAddedWithDefaultsAndOtherFilesIgnored) {
    commands_.addDropped({"C:\\S\\a.kra", "C:\\S\\b.txt", "C:\\S\\C.KRB", "C:\\S\\d.krab", "C:\\S\\kra",
                          "C:\\S\\e.xkra", "C:\\S.kra\\f", "C:\\S\\g.krc"});
    ASSERT_EQ(schedule_.size(), 3U);
    EXPECT_EQ(schedule_[1].path, "C:\\S\\C.KRB");
    EXPECT_EQ(schedule_[2].path, "C:\\S\\g.krc");
    ScheduledProject expected;
    expected.path = "C:\\S\\a.kra";
    expected.nextRun = TimeValue::never(); // follows entry 0 by default
    EXPECT_EQ(schedule_[0], expected);
    expectOneRedrawAndSaves(3);
}

TEST_F(ScheduleCommands, ANewEntryIsDueInAMinuteAndAddedWithItsNextRun) {
    schedule_.assign({hourly("a.kra")});
    log_.clear();
    for (const int minutes : {0, 10}) {
        clock_.set(now_ + TimeSpan::fromMinutes(minutes));
        EXPECT_EQ(commands_.newEntry().time, now_ + TimeSpan::fromMinutes(minutes + 1));
    }
    ScheduledProject record = commands_.newEntry();
    EXPECT_EQ(record.kind, ScheduleKind::AfterProject);
    record.path = "b.kra";
    record.kind = ScheduleKind::Hourly;
    commands_.add(record, {});
    ASSERT_EQ(schedule_.size(), 2U);
    EXPECT_EQ(schedule_[1].path, "b.kra");
    EXPECT_EQ(schedule_[1].nextRun, onTheHour_);
    expectOneRedrawAndSaves(1);
}

TEST_F(ScheduleCommands, TwoChosenFilesAddTwoEntriesAndOneAddsTheRecord) {
    commands_.add(hourly("ignored"), std::vector<std::string>{"C:\\S\\a.kra", "b.kra"});
    ASSERT_EQ(schedule_.size(), 2U);
    EXPECT_EQ(schedule_[0].path, "C:\\S\\a.kra");
    EXPECT_EQ(schedule_[1].path, "C:\\S\\\\b.kra");
    expectOneRedrawAndSaves(2);
    commands_.add(hourly("C:\\S\\typed.kra"), std::vector<std::string>{"C:\\S\\a.kra"});
    ASSERT_EQ(schedule_.size(), 3U);
    EXPECT_EQ(schedule_[2].path, "C:\\S\\typed.kra");
    expectOneRedrawAndSaves(1);
}

TEST_F(ScheduleCommands, AnEditIsAppliedAndItsNextRunComputed) {
    schedule_.assign({hourly("a.kra")});
    schedule_[0].lastResult = "recorded while it was edited";
    log_.clear();
    ScheduledProject edited = hourly("b.kra");
    edited.minutes = 45;
    commands_.edit(0, edited);
    EXPECT_EQ(schedule_[0].path, "b.kra");
    EXPECT_EQ(schedule_[0].lastResult, "recorded while it was edited");
    EXPECT_EQ(schedule_[0].nextRun, TimeValue::fromLocal(2026, 5, 20, 12, 45, 0, -1));
    expectOneRedrawAndSaves(1);
}

TEST_F(ScheduleCommands, EachSelectedProjectIsOpened) {
    schedule_.assign({hourly("a.kra"), hourly("b.kra"), hourly("run:c")});
    commands_.open({0, 2});
    EXPECT_THAT(opened_, ElementsAre("a.kra", "run:c"));
    EXPECT_THAT(store_.saved, IsEmpty());
}

} // namespace
