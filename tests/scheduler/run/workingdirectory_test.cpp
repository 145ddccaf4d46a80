#include "scheduler/run/workingdirectory.h"

#include <gtest/gtest.h>

namespace scheduler {
namespace {

TEST(WorkingDirectory, IsTheFolderOfTheFirstWord) {
    struct Row {
        const char* commandLine;
        const char* directory;
    };
    const Row rows[] = {
        {"\"C:\\Program Files\\Spider\\spider.exe\" /s1 \"D:\\x\\a.kra\"", "C:\\Program Files\\Spider\\"},
        {"C:\\Spider\\spider.exe /s1", "C:\\Spider\\"},
        {"C:\\Program Files\\Spider\\spider.exe", "C:\\"},
        {"  \t C:\\Spider\\spider.exe", "C:\\Spider\\"},
        {"spider.exe D:\\x", ""},
        {"tools/bin/spider.exe x", "tools/bin/"},
        {"C:\\a/b.exe", "C:\\"},
        {"\"tools/my spider.exe\"", "tools/"},
        {"'C:\\Spider\\spider.exe' x", "C:\\Spider\\"},
        {"'C:\\My Spider\\spider.exe' x", "C:\\"},
        {"\"C:\\Spider\\spider.exe", "C:\\Spider\\"},
        {"'C:\\Spider\\", "C:\\Spider\\"},
        {"\"'C:\\Spider\\x'\"", "'C:\\Spider\\"},
        {"\"C:\\Spider\\\"", "C:\\Spider\\"},
        {"C:\\Spider\\\"", "C:\\Spider\\"},
        {"\"C:\\a b\\c.exe\"d", "C:\\a b\\"},
        {"\"", ""},
        {"\"\"", ""},
        {"'", ""},
        {"", ""},
        {"   ", ""},
    };
    for (const Row& row : rows)
        EXPECT_EQ(workingDirectoryOf(row.commandLine), row.directory) << row.commandLine;
}

} // namespace
} // namespace scheduler
