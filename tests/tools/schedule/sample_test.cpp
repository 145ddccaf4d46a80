#include "scheduler/model/nextrun.h"
#include "scheduler/model/schedulecodec.h"
#include "scheduler/model/schedulefile.h"
#include "tests/support/fakeclock.h"
#include "tests/support/filecontent.h"
#include "tests/support/temporaryfolder.h"
#include "tools/schedule/sample.h"

#include <windows.h>

#include <gtest/gtest.h>

namespace {

using scheduler::ScheduleKind;
using test::fileContent;

class SampleTest : public testing::Test {
protected:
    bool write() {
        before = base::TimeValue::now();
        return writeSample(path, Sample::Whole) && loadSchedule(list, scheduler::scheduleMagic);
    }

    test::TemporaryFolder folder;
    std::string path = folder.file("new\\projects"); ///< not there yet
    scheduler::ScheduleList list;
    base::TimeValue before;
};

TEST_F(SampleTest, HasTwoThatAreDueInAMomentAndOneThatFollows) {
    ASSERT_TRUE(write());
    ASSERT_EQ(list.size(), 6u);
    EXPECT_EQ(list[0].path, path + "\\news.kra");
    EXPECT_EQ(list[1].path, "run:cmd /c exit");
    EXPECT_EQ(list[2].path, path + "\\mirror.krb");
    for (const std::size_t due : {0u, 1u}) {
        EXPECT_EQ(list[due].kind, ScheduleKind::Once);
        EXPECT_GT(list[due].time, before);
        EXPECT_LT(list[due].time, base::TimeValue::now() + base::TimeSpan::fromSeconds(30));
        EXPECT_EQ(list[due].nextRun, list[due].time);
    }
    EXPECT_EQ(list[2].kind, ScheduleKind::AfterProject);
    EXPECT_EQ(list[2].afterIndex, 0);
    EXPECT_EQ(list[2].nextRun, base::TimeValue::never());
}

TEST_F(SampleTest, HasOneOfEachRepeatingKindForLater) {
    ASSERT_TRUE(write());
    ASSERT_EQ(list.size(), 6u);
    EXPECT_EQ(list[3].kind, ScheduleKind::Hourly);
    EXPECT_EQ(list[3].runCommand, scheduler::RunCommand::RunUpdateOnly);
    EXPECT_EQ(list[4].kind, ScheduleKind::Daily);
    EXPECT_EQ(list[4].weekdays, (std::array<std::uint8_t, 7>{1, 1, 1, 1, 1, 0, 0}));
    EXPECT_EQ(list[5].kind, ScheduleKind::Monthly);
    EXPECT_EQ(list[5].dayOfMonth, 1);
    EXPECT_EQ(list[5].runCommand, scheduler::RunCommand::RunCompleteRefresh);
}

// A user sees the first three run on their own before any other.
TEST(SampleEntries, LaterOnesAreFarOffAtEveryMinuteOfTwoMonths) {
    test::FakeClock clock(base::TimeValue::fromLocal(2026, 2, 1, 0, 0, 0, -1));
    const base::TimeValue end = base::TimeValue::fromLocal(2026, 4, 1, 0, 0, 0, -1);
    for (; clock.now() < end; clock.advance(base::TimeSpan::fromMinutes(1))) {
        const auto entries = sampleEntries("C:\\Projects\\", clock, 8);
        for (std::size_t later = 3; later < entries.size(); ++later) {
            ASSERT_GE(entries[later].nextRun, clock.now() + base::TimeSpan::fromMinutes(20)) << later;
            ASSERT_LT(entries[later].nextRun, base::TimeValue::never()) << later;
        }
    }
}

TEST_F(SampleTest, ItsProjectsAreWritten) {
    ASSERT_TRUE(write());
    for (const scheduler::ScheduledProject& entry : list)
        EXPECT_TRUE(isCommandLine(entry) || fileContent(entry.path) != "") << entry.path;
    EXPECT_NE(fileContent(path + "\\news.kra").find("\nseconds=3\n"), std::string::npos);
    EXPECT_NE(fileContent(path + "\\mirror.krb").find("\nresult=2 pages could not be found\n"),
              std::string::npos);
    EXPECT_NE(fileContent(path + "\\report.kra"), "");
}

TEST_F(SampleTest, ASpiderInTheFolderIsTheCommandLine) {
    ASSERT_TRUE(write());
    ASSERT_TRUE(CopyFileA((path + "\\news.kra").c_str(), (path + "\\spider.exe").c_str(), TRUE));
    ASSERT_TRUE(write());
    EXPECT_EQ(list[1].path, "run:\"" + path + "\\spider.exe\" /s99 /e \"" + path + "\\report.kra\"");
}

TEST_F(SampleTest, ReplacesTheSchedule) {
    scheduler::ScheduleList other;
    for (int count = 0; count < 9; ++count)
        other.append({});
    ASSERT_TRUE(scheduler::saveSchedule(other));
    ASSERT_TRUE(write());
    EXPECT_EQ(list.size(), 6u);
}

TEST_F(SampleTest, FailsWhereNoFolderCanBe) {
    ASSERT_TRUE(write());
    EXPECT_FALSE(writeSample(path + "\\news.kra", Sample::Whole));
}

} // namespace
