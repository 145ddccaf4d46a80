#include "scheduler/model/schedulecodec.h"
#include "scheduler/model/schedulefile.h"
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
        return writeSample(path) && loadSchedule(list, scheduler::scheduleMagic);
    }

    test::TemporaryFolder folder;
    std::string path = folder.file("new\\projects"); ///< not there yet
    scheduler::ScheduleList list;
    base::TimeValue before;
};

TEST_F(SampleTest, HasTwoThatAreDueInAMomentAndOneThatFollows) {
    ASSERT_TRUE(write());
    ASSERT_EQ(list.size(), 3u);
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

TEST_F(SampleTest, ItsProjectsAreWritten) {
    ASSERT_TRUE(write());
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
    for (int count = 0; count < 5; ++count)
        other.append({});
    ASSERT_TRUE(scheduler::saveSchedule(other));
    ASSERT_TRUE(write());
    EXPECT_EQ(list.size(), 3u);
}

TEST_F(SampleTest, FailsWhereNoFolderCanBe) {
    ASSERT_TRUE(write());
    EXPECT_FALSE(writeSample(path + "\\news.kra"));
}

} // namespace
