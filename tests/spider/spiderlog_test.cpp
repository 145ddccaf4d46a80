#include "lib/base/opsys.h"
#include "lib/base/paths.h"
#include "tests/spider/spiderlog.h"
#include "tests/support/filecontent.h"
#include "tests/support/temporaryfolder.h"

#include <windows.h>

#include <gmock/gmock.h>

#include <algorithm>
#include <sstream>
#include <thread>
#include <vector>

namespace spider {
namespace {

using test::fileContent;
using test::TemporaryFolder;
using testing::MatchesRegex;

const std::string instant = "\\d+-\\d+-\\d+ \\d+:\\d+:\\d+ ";

TEST(SpiderLog, WritesALinePerEvent) {
    const TemporaryFolder folder;
    const std::string path = folder.file("a.log");
    EXPECT_TRUE(appendToLog(path, "start", 12, "\"spider\" /s12"));
    EXPECT_TRUE(appendToLog(path, "open", {}, "\"spider\" x"));
    EXPECT_THAT(fileContent(path), MatchesRegex(instant + "start run 12: \"spider\" /s12\r\n" + instant +
                                                "open run -: \"spider\" x\r\n"));
}

TEST(SpiderLog, SaysWhenItCannotBeWritten) {
    const TemporaryFolder folder;
    EXPECT_FALSE(appendToLog(folder.file("none\\a.log"), "start", 1, ""));
}

TEST(SpiderLog, LinesOfManyWritersStayWhole) {
    const TemporaryFolder folder;
    const std::string path = folder.file("a.log");
    constexpr unsigned writers = 16, lines = 300;
    std::vector<std::thread> threads;
    for (unsigned writer = 0; writer < writers; ++writer) {
        threads.emplace_back([&path, writer] {
            for (unsigned line = 0; line < lines; ++line)
                appendToLog(path, "start", writer, std::string(100, 'x'));
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    std::istringstream content(fileContent(path));
    unsigned count = 0;
    for (std::string line; std::getline(content, line); ++count)
        EXPECT_TRUE(line.ends_with(": " + std::string(100, 'x') + "\r")) << line;
    EXPECT_EQ(count, writers * lines);
}

TEST(SpiderLog, IsNamedByTheEnvironmentOrLiesBesideTheProgram) {
    SetEnvironmentVariableA("SCHEDULER_SPIDER_LOG", nullptr);
    EXPECT_EQ(logPath(), base::directoryOf(base::executablePath()) + "spider.log");
    SetEnvironmentVariableA("SCHEDULER_SPIDER_LOG", "C:\\elsewhere.log");
    EXPECT_EQ(logPath(), "C:\\elsewhere.log");
}

} // namespace
} // namespace spider
