#include "lib/base/registry.h"
#include "scheduler/run/projectlaunch.h"
#include "tests/scheduler/run/simulatedprocesses.h"
#include "tests/support/filecontent.h"
#include "tests/support/mockusermessages.h"
#include "tests/support/temporaryfolder.h"

#include <windows.h>

#include <gmock/gmock.h>

namespace scheduler {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

void associate(const std::string& extension, const std::string& command) {
    ASSERT_TRUE(base::writeString(HKEY_CLASSES_ROOT, '.' + extension + '\\', "Corvane.Test"));
    ASSERT_TRUE(base::writeString(HKEY_CLASSES_ROOT, "Corvane.Test\\shell\\open\\command\\", command));
}

/// Changes the real file associations. This is safe because each test program has its own Wine prefix.
class ProjectLaunch : public testing::Test {
protected:
    ProjectLaunch() {
        for (const char* extension : {".kra", ".krb", ".krc"})
            base::deleteKey(HKEY_CLASSES_ROOT, extension);
        test::writeFile(program, "");
        test::processes.starts.clear();
        test::processes.canStart = true;
    }

    test::TemporaryFolder folder;
    const std::string program = folder.file("my spider.exe");
    testing::StrictMock<test::MockUserMessages> messages;
};

TEST_F(ProjectLaunch, CommandLineHasTheAssociatedProgramAndItsFixedArguments) {
    const auto lineOf = [](const std::string& path) {
        ScheduledProject entry;
        entry.path = path;
        entry.runNumber = 3;
        return buildCommandLine(entry);
    };
    EXPECT_EQ(lineOf("C:\\news.kra"), "\"\" /s3 /r /e \"C:\\news.kra\"");
    associate("kra", "\"C:\\My Spider\\spider.exe\" \"%1\"");
    EXPECT_EQ(lineOf("C:\\news.kra"), "\"C:\\My Spider\\spider.exe\" /s3 /r /e \"C:\\news.kra\"");
    EXPECT_EQ(lineOf("run:C:\\news.kra"), "C:\\news.kra");
    associate("krb", "\"C:\\spider.exe\" -quiet \"%1\"");
    EXPECT_EQ(lineOf("C:\\NEWS.KRB"), "\"C:\\spider.exe\" -quiet /s3 /r /e \"C:\\NEWS.KRB\"");
}

TEST_F(ProjectLaunch, SpiderExistsIfItsPathExistsOrAFileMatchesItsPattern) {
    EXPECT_TRUE(spiderExists(program));
    EXPECT_TRUE(spiderExists(" \t\r\n\f" + program + "\f \t\r\n")) << "white space must be trimmed";
    EXPECT_TRUE(spiderExists(folder.path())) << "a folder also has attributes";
    for (const std::string& missing :
         {folder.file("missing.exe"), '"' + program + '"', std::string(), std::string(" ")})
        EXPECT_FALSE(spiderExists(missing)) << missing;
    for (const std::string pattern : {"my spider.*", "m*.exe", "my spide?.exe", "?y spider.exe"}) {
        EXPECT_TRUE(spiderExists(folder.file(pattern))) << pattern;
        EXPECT_TRUE(spiderExists("\t " + folder.file(pattern) + "\r\n ")) << pattern;
    }
    for (const std::string pattern : {"*.com", "?.exe", "none\\*"})
        EXPECT_FALSE(spiderExists(folder.file(pattern))) << pattern;
}

TEST_F(ProjectLaunch, OpeningDoesNothingForACommandLineOrAnotherType) {
    associate("kra", '"' + program + '"');
    associate("txt", '"' + program + '"');
    for (const char* path :
         {"run:notepad.exe", "run:C:\\news.kra", "C:\\news.txt", "C:\\news", "C:\\news.krab", ""})
        EXPECT_FALSE(openProject(path, messages)) << path;
    EXPECT_THAT(test::processes.starts, IsEmpty());
}

TEST_F(ProjectLaunch, OpeningStartsTheProgramWithTheProjectInANormalWindow) {
    for (const std::string& association :
         {'"' + program + "\" \"%1\"", '"' + program + "\" -fixed \"%1\"", program}) {
        test::processes.starts.clear();
        associate("kra", association);
        EXPECT_TRUE(openProject("C:\\a b.kra", messages));
        EXPECT_THAT(test::processes.starts,
                    ElementsAre(test::ProcessStart{'"' + program + "\" \"C:\\a b.kra\"", "", 5, FALSE}));
    }
}

TEST_F(ProjectLaunch, OpeningFailsSilentlyWhenTheSpiderCannotBeStarted) {
    test::processes.canStart = false;
    associate("kra", program);
    EXPECT_FALSE(openProject("C:\\news.kra", messages));
}

TEST_F(ProjectLaunch, MissingSpiderIsReportedByItsEdition) {
    const std::string rest = " must be installed on this computer in order to open or run this project.";
    EXPECT_CALL(messages, showError("Cannot find Corvane Delta!  Corvane Delta" + rest)).Times(2);
    EXPECT_CALL(messages, showError("Cannot find Corvane Sigma!  Corvane Sigma" + rest));
    EXPECT_CALL(messages, showError("Cannot find Corvane Omega!  Corvane Omega" + rest));
    associate("krb", '"' + folder.file("missing.exe") + "\" \"%1\"");
    for (const char* path : {"C:\\news.kra", "RUN:C:\\news.kra", "C:\\news.krb", "C:\\news.KRC"})
        EXPECT_TRUE(openProject(path, messages)) << path;
    EXPECT_THAT(test::processes.starts, IsEmpty());
}

} // namespace
} // namespace scheduler
