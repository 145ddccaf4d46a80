#include "scheduler/ui/schedulecommands.h"
#include "tests/support/eventlog.h"
#include "tests/support/fakeclock.h"
#include "tests/support/fakeenginelistener.h"
#include "tests/support/fakeoutcomesource.h"
#include "tests/support/fakerunlauncher.h"
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

class CountingStore : public scheduler::ScheduleStore {
public:
    int saves = 0;
    void save(const scheduler::ScheduleList&) override { ++saves; }
};

class ScheduleCommandsTest : public ::testing::Test {
protected:
    static ScheduledProject hourly(const std::string& path, bool disabled = false) {
        ScheduledProject entry;
        entry.path = path;
        entry.kind = ScheduleKind::Hourly;
        entry.disabled = disabled;
        entry.nextRun = TimeValue(7);
        return entry;
    }

    test::FakeClock clock_{TimeValue::fromLocal(2026, 5, 20, 12, 30, 0, -1)};
    test::EventLog log_;
    test::FakeRunLauncher launcher_{log_};
    test::FakeOutcomeSource outcomes_{log_};
    test::FakeEngineListener listener_{log_};
    ::testing::NiceMock<test::MockUserMessages> messages_;
    CountingStore store_;
    scheduler::ScheduleList schedule_;
    scheduler::RunPolicy policy_;
    scheduler::SchedulerEngine engine_{
        schedule_, policy_, {clock_, launcher_, outcomes_, store_, messages_, listener_}};
    std::vector<std::string> opened_;
    scheduler::ScheduleCommands commands_{schedule_, engine_, store_, clock_,
                                          [this](const std::string& path) { opened_.push_back(path); }};
    test::RedrawLog redraws_{schedule_, log_};
};

TEST_F(ScheduleCommandsTest, NothingHappensOnAnEmptySelection) {
    schedule_.assign({hourly("a.kra")});
    commands_.toggle({});
    commands_.remove({});
    commands_.runNow({});
    EXPECT_EQ(schedule_.size(), 1U);
    EXPECT_EQ(schedule_[0].nextRun, TimeValue(7));
    EXPECT_EQ(store_.saves, 0);
    EXPECT_TRUE(launcher_.launched.empty());
}

TEST_F(ScheduleCommandsTest, TogglingAMixedSelectionLeavesItMixed) {
    schedule_.assign({hourly("a.kra", false), hourly("b.kra", true), hourly("c.kra", false)});
    commands_.toggle({0, 1});
    EXPECT_EQ(schedule_[0].disabled, 1);
    EXPECT_EQ(schedule_[1].disabled, 0);
    EXPECT_EQ(schedule_[2].disabled, 0);
    const TimeValue onTheHour = TimeValue::fromLocal(2026, 5, 20, 13, 0, 0, -1);
    EXPECT_EQ(schedule_[0].nextRun, onTheHour) << "computed for the disabled one too";
    EXPECT_EQ(schedule_[1].nextRun, onTheHour);
    EXPECT_EQ(schedule_[2].nextRun, TimeValue(7)) << "not selected";
    EXPECT_EQ(store_.saves, 1);
}

TEST_F(ScheduleCommandsTest, RemovalKeepsTheChainsAndSavesOnce) {
    ScheduledProject follower = hourly("follower.kra");
    follower.kind = ScheduleKind::AfterProject;
    follower.afterIndex = 2;
    schedule_.assign({hourly("a.kra"), hourly("b.kra"), hourly("c.kra"), follower});
    schedule_[2].afterIndex = 1;
    commands_.remove({0, 2});
    ASSERT_EQ(schedule_.size(), 2U);
    EXPECT_EQ(schedule_[0].path, "b.kra");
    EXPECT_EQ(schedule_[1].afterIndex, 0);
    EXPECT_EQ(store_.saves, 1);
}

TEST_F(ScheduleCommandsTest, ARunningEntryCanBeRemovedAndItsEndIsIgnored) {
    schedule_.assign({hourly("a.kra")});
    commands_.runNow({0});
    commands_.remove({0});
    EXPECT_FALSE(engine_.onRunFinished(1));
}

TEST_F(ScheduleCommandsTest, RunNowStartsEachSelectedEntryAtOnceBesideOthers) {
    schedule_.assign({hourly("a.kra"), hourly("b.kra"), hourly("run:c")});
    commands_.runNow({0, 2});
    ASSERT_EQ(launcher_.launched.size(), 2U);
    EXPECT_EQ(launcher_.launched[0].number, 1);
    EXPECT_EQ(launcher_.launched[1].number, 2);
    EXPECT_EQ(schedule_[1].running, 0);
}

TEST_F(ScheduleCommandsTest, AManualRunThatCannotStartTellsTheUser) {
    schedule_.assign({hourly("a.kra")});
    launcher_.threadsStart = false;
    EXPECT_CALL(messages_, showNotice("A system error prevented the project from running."));
    commands_.runNow({0});
}

TEST_F(ScheduleCommandsTest, DroppedProjectsAreAddedWithDefaultsAndOthersAreIgnored) {
    commands_.addDropped({"C:\\S\\a.kra", "C:\\S\\b.txt", "C:\\S\\C.KRB", "C:\\S\\d.krab", "C:\\S\\kra",
                          "C:\\S\\e.xkra", "C:\\S.kra\\f", "C:\\S\\g.krc"});
    ASSERT_EQ(schedule_.size(), 3U);
    EXPECT_EQ(schedule_[0].path, "C:\\S\\a.kra");
    EXPECT_EQ(schedule_[1].path, "C:\\S\\C.KRB");
    EXPECT_EQ(schedule_[2].path, "C:\\S\\g.krc");
    ScheduledProject expected;
    expected.path = "C:\\S\\a.kra";
    expected.nextRun = TimeValue::never(); // follows entry 0, as the defaults have it
    EXPECT_TRUE(schedule_[0] == expected);
    EXPECT_EQ(store_.saves, 3);
}

TEST_F(ScheduleCommandsTest, AForeignDropChangesNothing) {
    commands_.addDropped({"C:\\S\\b.txt"});
    commands_.addDropped({});
    EXPECT_TRUE(schedule_.empty());
    EXPECT_EQ(store_.saves, 0);
}

TEST_F(ScheduleCommandsTest, ANewEntryIsAddedWithItsNextRunAndSaved) {
    schedule_.assign({hourly("a.kra")});
    ScheduledProject record = commands_.newEntry();
    EXPECT_EQ(record.kind, ScheduleKind::AfterProject);
    EXPECT_EQ(record.time, TimeValue::fromLocal(2026, 5, 20, 12, 31, 0, -1)) << "as of the clock";
    record.path = "b.kra";
    record.kind = ScheduleKind::Hourly;
    commands_.add(record, {});
    ASSERT_EQ(schedule_.size(), 2U);
    EXPECT_EQ(schedule_[1].path, "b.kra");
    EXPECT_EQ(schedule_[1].nextRun, TimeValue::fromLocal(2026, 5, 20, 13, 0, 0, -1));
    EXPECT_EQ(store_.saves, 1);
}

TEST_F(ScheduleCommandsTest, SeveralFilesAreAddedWithASaveEachAndOneRedraw) {
    ScheduledProject record = hourly("ignored");
    log_.clear();
    commands_.add(record, std::vector<std::string>{"C:\\S\\a.kra", "b.kra"});
    ASSERT_EQ(schedule_.size(), 2U);
    EXPECT_EQ(schedule_[0].path, "C:\\S\\a.kra");
    EXPECT_EQ(schedule_[1].path, "C:\\S\\\\b.kra");
    EXPECT_EQ(store_.saves, 2);
    EXPECT_THAT(log_, testing::ElementsAre("redraw"));
}

TEST_F(ScheduleCommandsTest, OneChosenFileGivesTheRecordAsItIs) {
    commands_.add(hourly("C:\\S\\typed.kra"), std::vector<std::string>{"C:\\S\\a.kra"});
    ASSERT_EQ(schedule_.size(), 1U);
    EXPECT_EQ(schedule_[0].path, "C:\\S\\typed.kra");
}

TEST_F(ScheduleCommandsTest, AnEditIsTakenOverComputedShownAndSaved) {
    schedule_.assign({hourly("a.kra")});
    schedule_[0].lastResult = "recorded while it was edited";
    log_.clear();
    ScheduledProject edited = hourly("b.kra");
    edited.minutes = 45;
    commands_.edit(0, edited);
    EXPECT_EQ(schedule_[0].path, "b.kra");
    EXPECT_EQ(schedule_[0].lastResult, "recorded while it was edited");
    EXPECT_EQ(schedule_[0].nextRun, TimeValue::fromLocal(2026, 5, 20, 12, 45, 0, -1));
    EXPECT_THAT(log_, testing::ElementsAre("redraw"));
    EXPECT_EQ(store_.saves, 1);
}

TEST_F(ScheduleCommandsTest, EachCommandRedrawsOnce) {
    schedule_.assign({hourly("a.kra"), hourly("b.kra"), hourly("c.kra")});
    log_.clear();
    commands_.toggle({0, 2});
    EXPECT_THAT(log_, testing::ElementsAre("redraw"));
    log_.clear();
    commands_.remove({0, 2});
    EXPECT_THAT(log_, testing::ElementsAre("redraw"));
    log_.clear();
    commands_.addDropped({"C:\\S\\a.kra", "C:\\S\\b.krb"});
    EXPECT_THAT(log_, testing::ElementsAre("redraw"));
}

TEST_F(ScheduleCommandsTest, EachSelectedProjectIsOpened) {
    schedule_.assign({hourly("a.kra"), hourly("b.kra"), hourly("run:c")});
    commands_.open({0, 2});
    EXPECT_THAT(opened_, testing::ElementsAre("a.kra", "run:c"));
    EXPECT_EQ(store_.saves, 0);
}

} // namespace
