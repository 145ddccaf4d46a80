// The sample spider as a process.
#include "lib/base/processes.h"
#include "lib/base/registry.h"
#include "tests/support/samplespider.h"

#include <windows.h>

#include <gmock/gmock.h>

namespace spider {
namespace {

using test::spiderPath;
using testing::HasSubstr;
using testing::Not;

const std::string outcomes = "SOFTWARE\\Brindlewood\\Corvane Scheduler\\";

class SpiderTest : public testing::Test {
protected:
    std::uint32_t run(const std::string& arguments) {
        line = '"' + spiderPath() + "\" " + arguments;
        return base::runProcessAndWait(line, SW_SHOWMINNOACTIVE, {}, INFINITE);
    }

    test::SpiderFolder folder;
    std::string line;
};

TEST_F(SpiderTest, RegistersItselfForAllProjects) {
    EXPECT_EQ(run("/register"), 0u);
    for (const std::string extension : {"kra", "krb", "krc"}) {
        EXPECT_EQ(base::getString(HKEY_CLASSES_ROOT, '.' + extension), "Corvane.Project." + extension);
        EXPECT_EQ(
            base::getString(HKEY_CLASSES_ROOT, "Corvane.Project." + extension + "\\shell\\open\\command\\"),
            '"' + spiderPath() + "\" \"%1\"");
    }
}

TEST_F(SpiderTest, LeavesItsOutcomeAndLogsItsRun) {
    const std::string project = folder.project("a b.kra", "ms=30\nresult=5 pages\nerror=3\n");
    EXPECT_EQ(run("/s41 /r /e \"" + project + '"'), 3u);
    EXPECT_EQ(base::getString(HKEY_LOCAL_MACHINE, outcomes + "Schedule41\\Result"), "5 pages");
    EXPECT_EQ(base::getNumber(HKEY_LOCAL_MACHINE, outcomes + "Schedule41\\Error", 99), 3u);
    EXPECT_THAT(folder.log(), HasSubstr(" start run 41: " + line + "\r\n"));
    EXPECT_THAT(folder.log(), HasSubstr(" end run 41: error 3\r\n"));
}

TEST_F(SpiderTest, TakesItsTime) {
    const std::string project = folder.project("a.kra", "ms=400");
    const ULONGLONG start = GetTickCount64();
    run("/s42 /r /e \"" + project + '"');
    EXPECT_GE(GetTickCount64() - start, 390u);
}

TEST_F(SpiderTest, LeavesNothingWhenToldSo) {
    run("/s43 /r /e \"" + folder.project("a.kra", "leave=nothing\nresult=x") + '"');
    std::string result;
    EXPECT_FALSE(base::readString(HKEY_LOCAL_MACHINE, outcomes + "Schedule43\\Result", result));
    EXPECT_EQ(base::getNumber(HKEY_LOCAL_MACHINE, outcomes + "Schedule43\\Error", 99), 99u);
    EXPECT_THAT(folder.log(), HasSubstr("end run 43: error 0"));
}

TEST_F(SpiderTest, LeavesANumberWhereATextBelongs) {
    run("/s44 /r /e \"" + folder.project("a.kra", "result-as-number=1\nerror=7") + '"');
    std::string result;
    EXPECT_FALSE(base::readString(HKEY_LOCAL_MACHINE, outcomes + "Schedule44\\Result", result));
    EXPECT_EQ(base::getNumber(HKEY_LOCAL_MACHINE, outcomes + "Schedule44\\Result", 99), 7u);
}

TEST_F(SpiderTest, Crashes) {
    EXPECT_EQ(run("/s45 /r /e \"" + folder.project("a.kra", "crash=1") + '"'), 0xC0000005u);
    EXPECT_EQ(base::getNumber(HKEY_LOCAL_MACHINE, outcomes + "Schedule45\\Error", 99), 99u);
    EXPECT_THAT(folder.log(), HasSubstr("start run 45"));
    EXPECT_THAT(folder.log(), Not(HasSubstr("end run 45")));
}

TEST_F(SpiderTest, MissingProjectIsAnError) {
    EXPECT_EQ(run("/s46 /r /e \"" + folder.path() + "none.kra\""), 2u);
    EXPECT_EQ(base::getNumber(HKEY_LOCAL_MACHINE, outcomes + "Schedule46\\Error", 99), 2u);
}

TEST_F(SpiderTest, EmptyProjectIsAGoodRun) {
    EXPECT_EQ(run("/s47 /r /e \"" + folder.project("a.kra", "") + '"'), 0u);
    EXPECT_EQ(base::getNumber(HKEY_LOCAL_MACHINE, outcomes + "Schedule47\\Error", 99), 0u);
}

TEST_F(SpiderTest, OpenedByHandItLogsAndEnds) {
    EXPECT_EQ(run("\"C:\\a b.kra\""), 0u);
    EXPECT_THAT(folder.log(), HasSubstr(" open run -: " + line + "\r\n"));
}

} // namespace
} // namespace spider
