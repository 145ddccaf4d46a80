#include "lib/base/files.h"
#include "lib/base/registry.h"
#include "scheduler/run/projectlaunch.h"
#include "tests/support/mockusermessages.h"
#include "tests/support/samplespider.h"

#include <windows.h>

#include <gmock/gmock.h>

#include <array>

namespace scheduler {
namespace {

using test::builtProgram;
using test::fileContent;
using test::MockUserMessages;
using test::registerSpider;
using test::spiderPath;
using testing::StartsWith;
using testing::StrictMock;

void associate(const std::string& extension, const std::string& command) {
    ASSERT_TRUE(base::writeString(HKEY_CLASSES_ROOT, '.' + extension + '\\', "Corvane.Test"));
    ASSERT_TRUE(base::writeString(HKEY_CLASSES_ROOT, "Corvane.Test\\shell\\open\\command\\", command));
}

void dissociate(const std::string& extension) {
    base::deleteKey(HKEY_CLASSES_ROOT, '.' + extension);
    base::deleteKey(HKEY_CLASSES_ROOT, "Corvane.Test");
}

class ProjectLaunchTest : public testing::Test {
protected:
    ProjectLaunchTest() {
        for (const char* extension : {"kra", "krb", "krc"})
            dissociate(extension);
    }

    test::SpiderFolder folder;
    StrictMock<MockUserMessages> messages;
};

// Command lines

TEST_F(ProjectLaunchTest, CommandLineNamesTheAssociatedProgram) {
    associate("kra", "\"C:\\Program Files\\Spider\\spider.exe\" \"%1\"");
    ScheduledProject entry;
    entry.path = "C:\\news.kra";
    entry.runNumber = 3;
    EXPECT_EQ(buildCommandLine(entry),
              "\"C:\\Program Files\\Spider\\spider.exe\" /s3 /r /e \"C:\\news.kra\"");
}

TEST_F(ProjectLaunchTest, CommandLineKeepsFixedArguments) {
    associate("krb", "\"C:\\spider.exe\" -quiet \"%1\"");
    ScheduledProject entry;
    entry.path = "C:\\NEWS.KRB";
    EXPECT_EQ(buildCommandLine(entry), "\"C:\\spider.exe\" -quiet /s0 /r /e \"C:\\NEWS.KRB\"");
}

TEST_F(ProjectLaunchTest, CommandLineWithoutAssociationHasAnEmptyProgram) {
    ScheduledProject entry;
    entry.path = "C:\\news.krc";
    EXPECT_EQ(buildCommandLine(entry), "\"\" /s0 /r /e \"C:\\news.krc\"");
}

TEST_F(ProjectLaunchTest, OwnCommandLineAsksForNoAssociation) {
    associate("kra", "\"C:\\spider.exe\" \"%1\"");
    ScheduledProject entry;
    entry.path = "run:C:\\news.kra";
    EXPECT_EQ(buildCommandLine(entry), "C:\\news.kra");
}

// Whether the spider is there

TEST_F(ProjectLaunchTest, SpiderExistsWhenItsAttributesCanBeRead) {
    const std::string file = folder.project("spider.exe", "x");
    EXPECT_TRUE(spiderExists(file));
    EXPECT_TRUE(spiderExists(" \t\r\n\f" + file + "\f \t\r\n")) << "white space is trimmed";
    EXPECT_TRUE(spiderExists(folder.path())) << "a folder has attributes, too";
    EXPECT_FALSE(spiderExists(folder.path() + "missing.exe"));
    EXPECT_FALSE(spiderExists('"' + file + '"'));
    EXPECT_FALSE(spiderExists(""));
    EXPECT_FALSE(spiderExists(" "));
}

TEST_F(ProjectLaunchTest, SpiderExistsWhenAFileMatchesItsPattern) {
    folder.project("spider.exe", "x");
    for (const std::string pattern : {"spider.*", "s*.exe", "spide?.exe", "?pider.exe"}) {
        EXPECT_TRUE(spiderExists(folder.path() + pattern)) << pattern;
        EXPECT_TRUE(spiderExists("\t " + folder.path() + pattern + "\r\n ")) << pattern;
    }
    EXPECT_FALSE(spiderExists(folder.path() + "*.com"));
    EXPECT_FALSE(spiderExists(folder.path() + "?.exe"));
    EXPECT_FALSE(spiderExists(folder.path() + "none\\*"));
}

// Opening by hand

TEST_F(ProjectLaunchTest, OpeningDoesNothingForACommandLineOrAnotherType) {
    ASSERT_TRUE(registerSpider());
    for (const char* path :
         {"run:notepad.exe", "run:C:\\news.kra", "C:\\news.txt", "C:\\news", "C:\\news.krab", ""})
        EXPECT_FALSE(openProject(path, messages)) << path;
    // Whatever was started has come to its log by the time that the next one has.
    const std::string project = folder.project("news.kra", "");
    EXPECT_TRUE(openProject(project, messages));
    const std::string line = " open run -: \"" + spiderPath() + "\" \"" + project + "\"\r\n";
    ASSERT_TRUE(folder.logShows(line)) << folder.log();
    EXPECT_EQ(folder.log().find('\n'), folder.log().size() - 1) << folder.log();
}

TEST_F(ProjectLaunchTest, OpeningStartsTheSpiderWithTheProject) {
    ASSERT_TRUE(registerSpider());
    const std::string project = folder.project("a b.krb", "");
    EXPECT_TRUE(openProject(project, messages));
    EXPECT_TRUE(folder.logShows(" open run -: \"" + spiderPath() + "\" \"" + project + "\"\r\n"))
        << folder.log();
}

TEST_F(ProjectLaunchTest, OpeningShowsTheSpiderNormallyWhereTheProgramIs) {
    const std::string program = builtProgram("scheduler\\run\\openedprogram.exe");
    std::array<char, MAX_PATH + 1> directory{};
    GetCurrentDirectoryA(directory.size(), directory.data());
    const std::string project = folder.project("a.kra", "");
    for (const std::string& command :
         {'"' + program + "\" \"%1\"", '"' + program + "\" -fixed \"%1\"", program}) {
        DeleteFileA((project + ".opened").c_str());
        associate("kra", command);
        EXPECT_TRUE(openProject(project, messages));
        for (int tries = 0; tries < 3000 && fileContent(project + ".opened").empty(); ++tries)
            Sleep(20);
        EXPECT_EQ(fileContent(project + ".opened"),
                  "5|" + std::string(directory.data()) + "|\"" + program + "\" \"" + project + '"')
            << command;
    }
}

TEST_F(ProjectLaunchTest, MissingSpiderIsToldByEdition) {
    for (const auto& [extension, edition] :
         {std::pair{"kra", "Corvane Delta"}, std::pair{"krb", "Corvane Sigma"},
          std::pair{"KRC", "Corvane Omega"}}) {
        associate(extension, '"' + folder.path() + "missing.exe\" \"%1\"");
        EXPECT_CALL(messages,
                    showError("Cannot find " + std::string(edition) + "!  " + edition +
                              " must be installed on this computer in order to open or run this project."));
        EXPECT_TRUE(openProject("C:\\news." + std::string(extension), messages));
        dissociate(extension);
    }
}

TEST_F(ProjectLaunchTest, MissingAssociationIsAMissingSpider) {
    EXPECT_CALL(messages,
                showError("Cannot find Corvane Delta!  Corvane Delta must be installed on this computer in "
                          "order to open or run this project."));
    EXPECT_TRUE(openProject("C:\\news.kra", messages));
}

TEST_F(ProjectLaunchTest, PrefixInCapitalsIsAProject) {
    EXPECT_CALL(messages, showError(StartsWith("Cannot find Corvane Delta!")));
    EXPECT_TRUE(openProject("RUN:C:\\news.kra", messages));
}

TEST_F(ProjectLaunchTest, SpiderThatCannotBeStartedIsAFailureWithoutAMessage) {
    associate("kra", '"' + folder.project("spider.exe", "no program") + "\" \"%1\"");
    EXPECT_FALSE(openProject("C:\\news.kra", messages));
}

} // namespace
} // namespace scheduler
