#include "scheduler/run/commandline.h"
#include "scheduler/run/edition.h"
#include "scheduler/run/workingdirectory.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <vector>

namespace scheduler {
namespace {

const std::string program = "\"C:\\Program Files\\Spider\\spider.exe\"";
const std::string project = " \"D:\\My Projects\\news.kra\"";

ScheduledProject entryOf(const std::string& path, std::int32_t runNumber = 1) {
    ScheduledProject entry;
    entry.path = path;
    entry.runNumber = runNumber;
    return entry;
}

struct Options {
    std::string dialupEntry = {};
    bool disconnects = false;
    std::int32_t minutes = 0;
};
const Options allOptions{"Office line", true, 30};

std::string lineOf(int command, const Options& options = {}, std::int32_t runNumber = 1) {
    ScheduledProject entry = entryOf("D:\\My Projects\\news.kra", runNumber);
    entry.runCommand = static_cast<RunCommand>(command);
    entry.dialupEntry = options.dialupEntry;
    entry.disconnectWhenDone = options.disconnects;
    entry.timeLimitMinutes = options.minutes;
    return composeCommandLine(entry, program);
}

TEST(CommandLine, AssociationIsSplitAfterTheQuotedProgram) {
    const struct {
        const char *association, *program, *arguments;
    } rows[] = {{"\"C:\\My Spider\\s.exe\" -x /y", "C:\\My Spider\\s.exe", " -x /y"},
                {"C:\\My Spider\\s.exe \"-x\"", "C:\\My Spider\\s.exe \"-x\"", ""},
                {"\"C:\\s.exe", "C:\\s.exe", ""},
                {"\"", "", ""},
                {"", "", ""}};
    for (const auto& row : rows) {
        const SpiderCommand command = splitAssociation(row.association);
        EXPECT_EQ(command.program, row.program) << row.association;
        EXPECT_EQ(command.arguments, row.arguments) << row.association;
    }
}

TEST(CommandLine, SwitchesFollowTheRunCommandAndTheOptions) {
    constexpr std::int32_t lowest = std::numeric_limits<std::int32_t>::min();
    const std::string all = " \"/aOffice line\" /d /t30 /e";
    EXPECT_EQ(lineOf(0), program + " /s1 /r /e" + project);
    EXPECT_EQ(lineOf(0, allOptions, 7), program + " /s7 /r" + all + project);
    EXPECT_EQ(lineOf(1, allOptions, 2), program + " /s2 /u" + all + project);
    EXPECT_EQ(lineOf(2, allOptions), program + " /s1 /l" + project);
    EXPECT_EQ(lineOf(3, allOptions), program + " /s1 /c" + all + project);
    for (const std::int32_t unknown : {4, -1, lowest})
        EXPECT_EQ(lineOf(unknown), program + " /s1 /e" + project) << unknown;
    EXPECT_EQ(lineOf(0, {.dialupEntry = "Home"}), program + " /s1 /r \"/aHome\" /e" + project);
    EXPECT_EQ(lineOf(0, {.disconnects = true}), program + " /s1 /r /d /e" + project);
    EXPECT_EQ(lineOf(0, {.minutes = 1}), program + " /s1 /r /t1 /e" + project);
    EXPECT_EQ(lineOf(0, {.minutes = lowest}, std::numeric_limits<std::int32_t>::max()),
              program + " /s2147483647 /r /t-2147483648 /e" + project);
}

TEST(CommandLine, ProgramIsQuotedOnceBeforeItsFixedArguments) {
    const ScheduledProject entry = entryOf("x.kra");
    EXPECT_EQ(composeCommandLine(entry, "C:\\Program Files\\Spider\\spider.exe"),
              program + " /s1 /r /e \"x.kra\"");
    EXPECT_EQ(composeCommandLine(entry, program + " -quiet \"-o x\""),
              program + " -quiet \"-o x\" /s1 /r /e \"x.kra\"");
    EXPECT_EQ(composeCommandLine(entry, ""), "\"\" /s1 /r /e \"x.kra\"");
}

TEST(CommandLine, TextAfterTheLowerCasePrefixIsUsedUnchanged) {
    ScheduledProject entry = entryOf("run:  notepad \"a b\" /x ");
    entry.dialupEntry = "Office line";
    EXPECT_EQ(composeCommandLine(entry, program), "  notepad \"a b\" /x ");
    EXPECT_EQ(composeCommandLine(entryOf("run:"), program), "");
    for (const std::string path : {"RUN:notepad", "Run:notepad", " run:notepad", "run"})
        EXPECT_EQ(composeCommandLine(entryOf(path), program), program + " /s1 /r /e \"" + path + '"');
}

TEST(CommandLine, WorkingDirectoryIsTheFolderOfTheFirstWord) {
    const struct {
        const char *commandLine, *directory;
    } rows[] = {
        {"\"C:\\Program Files\\Spider\\spider.exe\" /s1 \"D:\\x\\a.kra\"", "C:\\Program Files\\Spider\\"},
        {"  \t C:\\Spider\\spider.exe", "C:\\Spider\\"},
        {"C:\\Program Files\\Spider\\spider.exe", "C:\\"},
        {"tools/bin/spider.exe x", "tools/bin/"},
        {"C:\\a/b.exe", "C:\\"},
        {"'C:\\My Spider\\spider.exe' x", "C:\\"},
        {"'C:\\Spider\\", "C:\\Spider\\"},
        {"\"'C:\\Spider\\x'\"", "'C:\\Spider\\"},
        {"\"C:\\Spider\\\"", "C:\\Spider\\"},
        {"C:\\Spider\\\"", "C:\\Spider\\"},
        {"\"C:\\a b\\c.exe\"d", "C:\\a b\\"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(workingDirectoryOf(row.commandLine), row.directory) << row.commandLine;
    for (const char* line : {"spider.exe D:\\x", "\"", "\"\"", "'", "", "   "})
        EXPECT_EQ(workingDirectoryOf(line), "") << line;
}

TEST(CommandLine, ExtensionGivesTheEditionIgnoringCase) {
    const struct {
        int edition;
        const char* name;
        std::vector<const char*> paths;
    } rows[] = {
        {1, "Corvane Delta", {"C:\\a\\news.kra", "news.Kra", "C:\\a\\news.bak.kra", "C:\\a\\.kra"}},
        {2, "Corvane Sigma", {"C:\\a\\news.krb", "NEWS.KRB"}},
        {3, "Corvane Omega", {"C:\\a\\news.krc", "a/b/news.krc"}},
        {0, "", {"C:\\a.kra\\news", "news.kra.bak", "news.krd", "news.krab", "news.kr", "kra", "news.", ""}},
    };
    for (const auto& row : rows)
        for (const char* path : row.paths) {
            EXPECT_EQ(editionOf(path), row.edition) << path;
            EXPECT_EQ(editionName(path), row.name) << path;
        }
}

} // namespace
} // namespace scheduler
