#include "scheduler/ui/schedulecommands.h"
#include "tests/support/eventlog.h"
#include "tests/support/fakeclock.h"
#include "tests/support/fakeenginelistener.h"
#include "tests/support/fakeoutcomesource.h"
#include "tests/support/fakerunlauncher.h"
#include "tests/support/mockusermessages.h"

#include <gtest/gtest.h>

namespace {

using base::TimeSpan;
using base::TimeValue;
using scheduler::ScheduledProject;
using scheduler::ScheduleKind;

class CountingStore : public scheduler::ScheduleStore {
public:
    int saves = 0;
    bool save(const scheduler::ScheduleList&) override {
        ++saves;
        return true;
    }
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
    scheduler::ScheduleCommands commands_{schedule_, engine_, store_, clock_};
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
    EXPECT_EQ(launcher_.launched[0].runNumber, 1U);
    EXPECT_EQ(launcher_.launched[1].runNumber, 2U);
    EXPECT_EQ(schedule_[1].running, 0);
}

TEST_F(ScheduleCommandsTest, AManualRunThatCannotStartTellsTheUser) {
    schedule_.assign({hourly("a.kra")});
    launcher_.threadsStart = false;
    EXPECT_CALL(messages_, showNotice("A system error prevented the project from running."));
    commands_.runNow({0});
}

TEST_F(ScheduleCommandsTest, DroppedProjectsAreAddedWithDefaultsAndOthersAreIgnored) {
    EXPECT_TRUE(commands_.addDropped({"C:\\S\\a.kra", "C:\\S\\b.txt", "C:\\S\\C.KRB", "C:\\S\\d.krab",
                                      "C:\\S\\kra", "C:\\S\\e.xkra", "C:\\S.kra\\f", "C:\\S\\g.krc"}));
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
    EXPECT_FALSE(commands_.addDropped({"C:\\S\\b.txt"}));
    EXPECT_FALSE(commands_.addDropped({}));
    EXPECT_TRUE(schedule_.empty());
    EXPECT_EQ(store_.saves, 0);
}

} // namespace
