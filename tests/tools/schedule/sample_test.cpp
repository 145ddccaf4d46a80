#include "scheduler/model/schedulecodec.h"
#include "scheduler/model/schedulefile.h"
#include "tests/support/fakeclock.h"
#include "tests/support/filecontent.h"
#include "tests/support/schedulekinds.h"
#include "tests/support/temporaryfolder.h"
#include "tools/schedule/sample.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using scheduler::ScheduleKind;
using test::fileContent;

class ScheduleSample : public testing::Test {
protected:
    bool write() {
        before = base::TimeValue::now();
        return writeSample(path, Sample::Whole) && loadSchedule(list, scheduler::scheduleMagic);
    }

    test::TemporaryFolder folder;
    std::string path = folder.file("new\\projects"); ///< does not exist yet
    scheduler::ScheduleList list;
    base::TimeValue before;
};

TEST_F(ScheduleSample, FirstTwoEntriesAreDueSoonAndTheThirdFollows) {
    ASSERT_TRUE(write());
    ASSERT_EQ(list.size(), 10U);
    EXPECT_EQ(list[0].path, path + "\\news.kra");
    EXPECT_EQ(list[1].path, "run:\"" + path + "\\backup.bat\"");
    EXPECT_EQ(list[2].path, path + "\\mirror.krb");
    for (const std::size_t due : {0U, 1U}) {
        EXPECT_EQ(list[due].kind, ScheduleKind::Once);
        EXPECT_GE(list[due].time, before + base::TimeSpan::fromSeconds(8));
        EXPECT_LE(list[due].time, base::TimeValue::now() + base::TimeSpan::fromSeconds(8));
        EXPECT_EQ(list[due].nextRun, list[due].time);
    }
    EXPECT_EQ(list[2].kind, ScheduleKind::AfterProject);
    EXPECT_EQ(list[2].afterIndex, 0);
    EXPECT_EQ(list[2].nextRun, base::TimeValue::never());
}

TEST_F(ScheduleSample, HasEveryKindEveryCommandADisabledEntryAndAnEnabledOneWithAResult) {
    ASSERT_TRUE(write());
    for (const ScheduleKind kind : test::allKinds)
        EXPECT_TRUE(std::ranges::any_of(list, [&](const auto& entry) { return entry.kind == kind; }));
    for (int command = 0; command < 4; ++command)
        EXPECT_TRUE(std::ranges::any_of(
            list, [&](const auto& entry) { return static_cast<int>(entry.runCommand) == command; }));
    EXPECT_TRUE(std::ranges::any_of(list, [](const auto& entry) { return entry.disabled != 0; }));
    EXPECT_TRUE(std::ranges::any_of(
        list, [](const auto& entry) { return entry.disabled == 0 && entry.lastResult != ""; }));
}

// No other entry disturbs the demonstration of the first three.
TEST_F(ScheduleSample, OtherEntriesAreFarInTheFutureAtEveryMinuteOfTwoMonths) {
    test::FakeClock clock(base::TimeValue::fromLocal(2026, 2, 1, 0, 0, 0, -1));
    const base::TimeValue end = base::TimeValue::fromLocal(2026, 4, 1, 0, 0, 0, -1);
    for (; clock.now() < end; clock.advance(base::TimeSpan::fromMinutes(1))) {
        const auto entries = sampleEntries("C:\\Projects\\", clock, 8);
        for (std::size_t later = 3; later < entries.size(); ++later) {
            ASSERT_GE(entries[later].nextRun, clock.now() + base::TimeSpan::fromMinutes(20)) << later;
            ASSERT_EQ(entries[later].nextRun == base::TimeValue::never(), later == 7 || later == 9) << later;
        }
    }
}

TEST_F(ScheduleSample, WritesItsProjects) {
    ASSERT_TRUE(write());
    for (const scheduler::ScheduledProject& entry : list)
        EXPECT_TRUE(isCommandLine(entry) || fileContent(entry.path) != "") << entry.path;
    EXPECT_NE(fileContent(path + "\\news.kra").find("\nseconds=3\n"), std::string::npos);
    EXPECT_NE(fileContent(path + "\\mirror.krb").find("\nresult=2 pages not found\n"), std::string::npos);
    EXPECT_NE(fileContent(path + "\\report.kra"), "");
    EXPECT_EQ(fileContent(path + "\\backup.bat"), "@rem Ends at once.\n");
}

TEST_F(ScheduleSample, CommandLineUsesTheSpiderInTheFolder) {
    ASSERT_TRUE(write());
    ASSERT_TRUE(CopyFileA((path + "\\news.kra").c_str(), (path + "\\spider.exe").c_str(), TRUE));
    ASSERT_TRUE(write());
    EXPECT_EQ(list[1].path, "run:\"" + path + "\\spider.exe\" /s99 /e \"" + path + "\\report.kra\"");
    EXPECT_FALSE(writeSample(path + "\\news.kra", Sample::Whole)) << "a file is in the folder's place";
}

} // namespace
