#include "scheduler/run/commandline.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

namespace scheduler {
namespace {

constexpr std::string_view quotedSpider = "\"C:\\Program Files\\Spider\\spider.exe\"";
const std::string p = std::string(quotedSpider);
const std::string project = "D:\\My Projects\\news.kra";
const std::string q = '"' + project + '"';

ScheduledProject entryOf(std::string path, std::int32_t runNumber = 1) {
    ScheduledProject entry;
    entry.path = std::move(path);
    entry.runNumber = runNumber;
    return entry;
}

ScheduledProject fullEntry(RunCommand command) {
    ScheduledProject entry = entryOf(project, 7);
    entry.runCommand = command;
    entry.dialupEntry = "Office line";
    entry.disconnectWhenDone = 1;
    entry.timeLimitMinutes = 30;
    return entry;
}

TEST(Association, IsTakenApart) {
    struct Row {
        const char* association;
        const char* program;
        const char* arguments;
    };
    const Row rows[] = {
        {"\"C:\\Program Files\\spider.exe\"", "C:\\Program Files\\spider.exe", ""},
        {"\"C:\\Program Files\\spider.exe\" -x /y", "C:\\Program Files\\spider.exe", " -x /y"},
        {"C:\\Program Files\\spider.exe", "C:\\Program Files\\spider.exe", ""},
        {"C:\\spider.exe -x", "C:\\spider.exe -x", ""},
        {"C:\\spider.exe \"-x\"", "C:\\spider.exe \"-x\"", ""},
        {"\"C:\\spider.exe", "C:\\spider.exe", ""},
        {"\"", "", ""},
        {"", "", ""},
    };
    for (const Row& row : rows) {
        const SpiderCommand command = splitAssociation(row.association);
        EXPECT_EQ(command.program, row.program) << row.association;
        EXPECT_EQ(command.arguments, row.arguments) << row.association;
    }
}

TEST(CommandLine, NormalRunWithoutOptions) {
    EXPECT_EQ(composeCommandLine(entryOf(project), quotedSpider), p + " /s1 /r /e " + q);
}

TEST(CommandLine, UpdateWithEveryOption) {
    ScheduledProject entry = fullEntry(RunCommand::RunUpdateOnly);
    entry.runNumber = 2;
    EXPECT_EQ(composeCommandLine(entry, quotedSpider), p + " /s2 /u \"/aOffice line\" /d /t30 /e " + q);
}

TEST(CommandLine, RelinkWithoutOptions) {
    ScheduledProject entry = entryOf(project);
    entry.runCommand = RunCommand::RelinkFiles;
    EXPECT_EQ(composeCommandLine(entry, quotedSpider), p + " /s1 /l " + q);
}

TEST(CommandLine, RelinkNeverCarriesConnectionSwitches) {
    EXPECT_EQ(composeCommandLine(fullEntry(RunCommand::RelinkFiles), quotedSpider), p + " /s7 /l " + q);
}

TEST(CommandLine, EachCommandHasItsSwitch) {
    const std::string rest = " \"/aOffice line\" /d /t30 /e " + q;
    EXPECT_EQ(composeCommandLine(fullEntry(RunCommand::RunNormally), quotedSpider), p + " /s7 /r" + rest);
    EXPECT_EQ(composeCommandLine(fullEntry(RunCommand::RunUpdateOnly), quotedSpider), p + " /s7 /u" + rest);
    EXPECT_EQ(composeCommandLine(fullEntry(RunCommand::RunCompleteRefresh), quotedSpider),
              p + " /s7 /c" + rest);
}

TEST(CommandLine, UnknownCommandHasNoSwitch) {
    for (const std::int32_t value : {4, -1, std::numeric_limits<std::int32_t>::min()}) {
        ScheduledProject entry = entryOf(project);
        entry.runCommand = static_cast<RunCommand>(value);
        EXPECT_EQ(composeCommandLine(entry, quotedSpider), p + " /s1 /e " + q) << value;
    }
}

TEST(CommandLine, EachOptionStandsAlone) {
    ScheduledProject dialled = entryOf(project);
    dialled.dialupEntry = "Home";
    EXPECT_EQ(composeCommandLine(dialled, quotedSpider), p + " /s1 /r \"/aHome\" /e " + q);

    ScheduledProject disconnecting = entryOf(project);
    disconnecting.disconnectWhenDone = 1;
    EXPECT_EQ(composeCommandLine(disconnecting, quotedSpider), p + " /s1 /r /d /e " + q);

    ScheduledProject limited = entryOf(project);
    limited.timeLimitMinutes = 1;
    EXPECT_EQ(composeCommandLine(limited, quotedSpider), p + " /s1 /r /t1 /e " + q);
}

TEST(CommandLine, DialupNameWithBlanksStaysOneArgument) {
    ScheduledProject entry = entryOf(project);
    entry.dialupEntry = " my  office line ";
    EXPECT_EQ(composeCommandLine(entry, quotedSpider), p + " /s1 /r \"/a my  office line \" /e " + q);
}

TEST(CommandLine, NumbersAreDecimalWhateverTheyAre) {
    ScheduledProject entry = entryOf(project, std::numeric_limits<std::int32_t>::max());
    entry.timeLimitMinutes = std::numeric_limits<std::int32_t>::min();
    EXPECT_EQ(composeCommandLine(entry, quotedSpider), p + " /s2147483647 /r /t-2147483648 /e " + q);
}

TEST(CommandLine, ProgramIsQuotedExactlyOnce) {
    EXPECT_EQ(composeCommandLine(entryOf(project), "C:\\Program Files\\Spider\\spider.exe"),
              p + " /s1 /r /e " + q);
}

TEST(CommandLine, FixedArgumentsStayBehindTheProgram) {
    EXPECT_EQ(composeCommandLine(entryOf(project), p + " -quiet \"-o x\""),
              p + " -quiet \"-o x\" /s1 /r /e " + q);
}

TEST(CommandLine, NoAssociationLeavesAnEmptyProgram) {
    EXPECT_EQ(composeCommandLine(entryOf(project), ""), "\"\" /s1 /r /e " + q);
}

TEST(CommandLine, OwnCommandLineIsUnchanged) {
    ScheduledProject entry = fullEntry(RunCommand::RunUpdateOnly);
    entry.path = "run:  notepad \"a b\" /x ";
    EXPECT_EQ(composeCommandLine(entry, quotedSpider), "  notepad \"a b\" /x ");
}

TEST(CommandLine, PrefixAloneIsAnEmptyCommandLine) {
    EXPECT_EQ(composeCommandLine(entryOf("run:"), quotedSpider), "");
}

TEST(CommandLine, PrefixInCapitalsIsAProject) {
    EXPECT_EQ(composeCommandLine(entryOf("RUN:notepad"), quotedSpider), p + " /s1 /r /e \"RUN:notepad\"");
    EXPECT_EQ(composeCommandLine(entryOf("Run:notepad"), quotedSpider), p + " /s1 /r /e \"Run:notepad\"");
    EXPECT_EQ(composeCommandLine(entryOf(" run:notepad"), quotedSpider), p + " /s1 /r /e \" run:notepad\"");
    EXPECT_EQ(composeCommandLine(entryOf("run"), quotedSpider), p + " /s1 /r /e \"run\"");
}

} // namespace
} // namespace scheduler
