// The sample spider as a process.
#include "lib/base/handles.h"
#include "lib/base/processes.h"
#include "lib/base/registry.h"
#include "tests/support/patience.h"
#include "tests/support/samplespider.h"

#include <windows.h>

#include <gmock/gmock.h>

#include <vector>

namespace {

using test::spiderPath;
using testing::HasSubstr;
using testing::Not;

class Spider : public testing::Test {
protected:
    std::uint32_t run(const std::string& arguments) {
        line_ = '"' + spiderPath() + "\" " + arguments;
        return base::runProcessAndWait(line_, SW_SHOWMINNOACTIVE, {}, INFINITE);
    }

    /// What the run with that number has left.
    static std::string resultOf(const std::string& number) {
        std::string text;
        return base::readString(HKEY_LOCAL_MACHINE, outcomes + number + "\\Result", text) ? text : "none";
    }
    static std::uint32_t numberOf(const std::string& number, const std::string& value) {
        return base::getNumber(HKEY_LOCAL_MACHINE, outcomes + number + '\\' + value, 99);
    }

    test::SpiderFolder folder_;
    std::string line_;

private:
    static inline const std::string outcomes = "SOFTWARE\\Brindlewood\\Corvane Scheduler\\Schedule";
};

TEST_F(Spider, RegistersItselfForAllProjects) {
    EXPECT_EQ(run("/register"), 0U);
    for (const std::string extension : {"kra", "krb", "krc"}) {
        EXPECT_EQ(base::getString(HKEY_CLASSES_ROOT, '.' + extension), "Corvane.Project." + extension);
        EXPECT_EQ(
            base::getString(HKEY_CLASSES_ROOT, "Corvane.Project." + extension + "\\shell\\open\\command\\"),
            '"' + spiderPath() + "\" \"%1\"");
    }
}

TEST_F(Spider, EndsAsItsProjectSays) {
    struct Case {
        std::string project;
        std::uint32_t exitCode;
        std::string result;
        std::uint32_t error;
    };
    const std::vector<Case> cases = {
        {"", 0, "", 0},
        {"# error=9\r\nresult=3 pages = 2 new\r\nerror=4294967295\r\n", 4294967295, "3 pages = 2 new", 4294967295},
        {"result=x\nleave=nothing\nerror=3", 3, "none", 99},
        {"crash=1", 0xC0000005, "none", 99},
    };
    for (const Case& expected : cases) {
        SCOPED_TRACE(expected.project);
        const std::string number = std::to_string(&expected - cases.data());
        EXPECT_EQ(run("/s" + number + " /u \"" + folder_.project("a b.kra", expected.project) + '"'),
                  expected.exitCode);
        EXPECT_EQ(resultOf(number), expected.result);
        EXPECT_EQ(numberOf(number, "Error"), expected.error);
        EXPECT_THAT(folder_.log(), HasSubstr(" start run " + number + ": " + line_ + "\r\n"));
    }
    EXPECT_THAT(folder_.log(), HasSubstr(" end run 2: error 3\r\n"));
    EXPECT_THAT(folder_.log(), Not(HasSubstr("end run 3"))) << "a crash ends its log";
}

TEST_F(Spider, LeavesANumberWhereATextBelongs) {
    run("/s11 /r /e \"" + folder_.project("a.kra", "result-as-number=1\nerror=7") + '"');
    EXPECT_EQ(resultOf("11"), "none");
    EXPECT_EQ(numberOf("11", "Result"), 7U);
}

TEST_F(Spider, AProjectThatIsMissingIsAnError) {
    EXPECT_EQ(run("/s12 /r /e \"" + folder_.path() + "none.kra\""), 2U);
    EXPECT_EQ(numberOf("12", "Error"), 2U);
}

TEST_F(Spider, RunsUntilItsEventIsSignalled) {
    const base::KernelHandle event(CreateEventA(nullptr, TRUE, FALSE, "spider test"));
    constexpr std::uint32_t runs = 8;
    for (std::uint32_t i = 0; i < runs; ++i)
        ASSERT_TRUE(base::startProcess('"' + spiderPath() + "\" /s13 " +
                                           folder_.project("a.kra", "until=spider test\nerror=1"),
                                       SW_HIDE, {}));
    const auto logged = [this](const std::string& text) {
        std::uint32_t lines = 0;
        const std::string log = folder_.log();
        for (std::size_t at = 0; (at = log.find(text, at)) != std::string::npos; ++at)
            ++lines;
        return lines;
    };
    const auto waitFor = [&](const std::string& text) {
        for (const ULONGLONG end = GetTickCount64() + test::patience; GetTickCount64() < end; Sleep(10))
            if (logged(text) == runs)
                return true;
        return false;
    };
    ASSERT_TRUE(waitFor(" start run 13: ")) << "each writer's line is there";
    EXPECT_EQ(logged("end run"), 0U);
    SetEvent(event.get());
    EXPECT_TRUE(waitFor(" end run 13: error 1\r\n"));
}

TEST_F(Spider, OpenedByHandItLogsAndEnds) {
    EXPECT_EQ(run("\"C:\\a b.kra\""), 0U);
    EXPECT_THAT(folder_.log(), HasSubstr(" open run -: " + line_ + "\r\n"));
    SetEnvironmentVariableA("SCHEDULER_SPIDER_LOG", "C:\\no such folder\\a.log");
    EXPECT_EQ(run("\"C:\\a b.kra\""), 1U);
}

} // namespace
