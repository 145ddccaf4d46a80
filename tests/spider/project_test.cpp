#include "tests/spider/project.h"

#include <gtest/gtest.h>

namespace spider {
namespace {

using namespace std::chrono_literals;

TEST(Project, EmptyTextIsAGoodRunOfNoTime) {
    const Project project = parseProject("");
    EXPECT_EQ(project.duration, 0ms);
    EXPECT_EQ(project.result, "");
    EXPECT_EQ(project.error, 0u);
    EXPECT_FALSE(project.resultAsNumber);
    EXPECT_FALSE(project.leaveNothing);
    EXPECT_FALSE(project.crash);
}

TEST(Project, ReadsEverySetting) {
    const Project project =
        parseProject("# a comment with error=9\r\n\r\nseconds=1.5\r\nresult=3 pages = 2 new\r\n"
                     "error=17\r\nresult-as-number=1\r\nleave=nothing\r\ncrash=1");
    EXPECT_EQ(project.duration, 1500ms);
    EXPECT_EQ(project.result, "3 pages = 2 new");
    EXPECT_EQ(project.error, 17u);
    EXPECT_TRUE(project.resultAsNumber);
    EXPECT_TRUE(project.leaveNothing);
    EXPECT_TRUE(project.crash);
}

TEST(Project, ReadsThousandthsAndBareLineFeeds) {
    EXPECT_EQ(parseProject("ms=250\nerror=4294967295\n").duration, 250ms);
    EXPECT_EQ(parseProject("ms=250\nerror=4294967295\n").error, 4294967295u);
}

TEST(Project, OddTextsAreHarmless) {
    EXPECT_EQ(parseProject("seconds=-4").duration, 0ms);
    EXPECT_EQ(parseProject("seconds=soon").duration, 0ms);
    EXPECT_GT(parseProject("seconds=1e300").duration, 1h);
    EXPECT_EQ(parseProject("=\nresult\nunknown=1\n\n").result, "");
}

TEST(Project, TimeLimitEndsTheRunEarly) {
    Project project;
    project.duration = 90s;
    EXPECT_EQ(runTime(project, {}), 90s);
    EXPECT_EQ(runTime(project, 0), 90s);
    EXPECT_EQ(runTime(project, 1), 60s);
    EXPECT_EQ(runTime(project, 2), 90s);
    EXPECT_EQ(runTime(project, -1), 90s);
    EXPECT_EQ(runTime(project, 9223372036854775807), 90s);
}

} // namespace
} // namespace spider
