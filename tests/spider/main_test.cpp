#include "lib/base/handles.h"
#include "lib/base/opsys.h"
#include "lib/base/paths.h"
#include "lib/base/processes.h"
#include "lib/base/registry.h"
#include "tests/support/filecontent.h"
#include "tests/support/temporaryfolder.h"
#include "tests/support/timeout.h"

#include <windows.h>

#include <gmock/gmock.h>

#include <string>

namespace {

using testing::HasSubstr;

class Spider : public testing::Test {
protected:
    Spider() { SetEnvironmentVariableA("SCHEDULER_SPIDER_LOG", folder_.file("spider.log").c_str()); }

    std::uint32_t run(const std::string& arguments) {
        line_ = '"' + spider_ + "\" " + arguments;
        return base::runProcessAndWait(line_, SW_SHOWMINNOACTIVE, {}, INFINITE);
    }
    std::string project(const std::string& content) const {
        test::writeFile(folder_.file("a b.kra"), content);
        return '"' + folder_.file("a b.kra") + '"';
    }
    std::string log() const { return test::fileContent(folder_.file("spider.log")); }

    static std::string resultOf(const std::string& number) {
        std::string text;
        return base::readString(HKEY_LOCAL_MACHINE, outcomes + number + "\\Result", text) ? text : "none";
    }
    static std::uint32_t numberOf(const std::string& number, const std::string& value) {
        return base::getNumber(HKEY_LOCAL_MACHINE, outcomes + number + '\\' + value, 99);
    }

    const std::string spider_ = base::directoryOf(base::executablePath()) + "spider.exe";
    test::TemporaryFolder folder_;
    std::string line_;

private:
    static inline const std::string outcomes = "SOFTWARE\\Brindlewood\\Corvane Scheduler\\Schedule";
};

TEST_F(Spider, RegistersItselfForAllProjects) {
    EXPECT_EQ(run("/register"), 0U);
    for (const std::string extension : {"kra", "krb", "krc"}) {
        const std::string type = "Corvane.Project." + extension;
        EXPECT_EQ(base::getString(HKEY_CLASSES_ROOT, '.' + extension), type);
        EXPECT_EQ(base::getString(HKEY_CLASSES_ROOT, type + "\\shell\\open\\command\\"),
                  '"' + spider_ + "\" \"%1\"");
    }
}

TEST_F(Spider, EndsAsItsProjectSays) {
    const struct {
        std::string project;
        std::uint32_t exitCode;
        std::string result;
        std::uint32_t error;
    } rows[] = {
        {"", 0, "", 0},
        {"# error=9\r\nresult=3 pages = 2 new\r\nerror=4294967295\r\n", 4294967295, "3 pages = 2 new",
         4294967295},
        {"result=x\nleave=nothing\nerror=3", 3, "none", 99},
        {"crash=1", 0xC0000005, "none", 99},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.project);
        const std::string number = std::to_string(&row - rows);
        EXPECT_EQ(run("/s" + number + " /u " + project(row.project)), row.exitCode);
        EXPECT_EQ(resultOf(number), row.result);
        EXPECT_EQ(numberOf(number, "Error"), row.error);
        EXPECT_THAT(log(), HasSubstr(" start run " + number + ": " + line_ + "\r\n"));
    }
    EXPECT_THAT(log(), HasSubstr(" end run 2: error 3\r\n"));
    EXPECT_THAT(log(), testing::Not(HasSubstr("end run 3"))) << "a crashed run logs no end";
    run("/s11 /r /e " + project("result-as-number=1\nerror=7"));
    EXPECT_EQ(resultOf("11"), "none");
    EXPECT_EQ(numberOf("11", "Result"), 7U);
    EXPECT_EQ(run("/s12 /r /e \"" + folder_.file("missing.kra") + '"'), 2U);
    EXPECT_EQ(numberOf("12", "Error"), 2U);
}

TEST_F(Spider, SeveralInstancesRunAndLogUntilTheirEventIsSignalled) {
    const base::KernelHandle event(CreateEventA(nullptr, TRUE, FALSE, "spider test"));
    constexpr std::uint32_t runs = 8;
    const std::string endless = project("until=spider test\nerror=1");
    for (std::uint32_t i = 0; i < runs; ++i)
        ASSERT_TRUE(base::startProcess('"' + spider_ + "\" /s13 " + endless, SW_HIDE, {}));
    const auto logged = [this](const std::string& text) {
        std::uint32_t lines = 0;
        const std::string all = log();
        for (std::size_t at = 0; (at = all.find(text, at)) != std::string::npos; ++at)
            ++lines;
        return lines;
    };
    const auto waitFor = [&](const std::string& text) {
        for (const ULONGLONG end = GetTickCount64() + test::timeout; GetTickCount64() < end; Sleep(10))
            if (logged(text) == runs)
                return true;
        return false;
    };
    ASSERT_TRUE(waitFor(" start run 13: ")) << "lines were lost";
    EXPECT_EQ(logged("end run"), 0U);
    SetEvent(event.get());
    EXPECT_TRUE(waitFor(" end run 13: error 1\r\n"));
}

TEST_F(Spider, LogsAndEndsWhenOpenedByTheUser) {
    EXPECT_EQ(run("\"C:\\a b.kra\""), 0U);
    EXPECT_THAT(log(), HasSubstr(" open run -: " + line_ + "\r\n"));
    SetEnvironmentVariableA("SCHEDULER_SPIDER_LOG", "C:\\no such folder\\a.log");
    EXPECT_EQ(run("\"C:\\a b.kra\""), 1U);
}

} // namespace
