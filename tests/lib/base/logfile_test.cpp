#include "lib/base/logfile.h"
#include "tests/lib/base/filebytes.h"
#include "tests/support/filecontent.h"
#include "tests/support/handlecount.h"
#include "tests/support/temporaryfolder.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

namespace base {
namespace {

using test::fileContent;
using test::writeFile;

class LogFiles : public testing::Test {
protected:
    bool append(const std::string& line, std::uint32_t sizeLimit = 1000) const {
        return appendLine({path_, olderPath_, "header", sizeLimit}, line);
    }

    const test::TemporaryFolder folder_;
    const std::string path_ = folder_.file("one\\two\\log.txt");
    const std::string olderPath_ = folder_.file("one\\two\\log.1.txt");
};

TEST_F(LogFiles, FirstLineCreatesTheFolderAndTheHeader) {
    EXPECT_TRUE(append("first"));
    EXPECT_EQ(fileContent(path_), "header\r\nfirst\r\n");
    EXPECT_TRUE(append("second"));
    EXPECT_EQ(fileContent(path_), "header\r\nfirst\r\nsecond\r\n");
}

TEST_F(LogFiles, LineAfterATruncatedLineStartsOnItsOwnLine) {
    ASSERT_TRUE(append("first"));
    for (const std::string cut : {"header\r\nfir", "header\r\nfirst\r"}) {
        ASSERT_TRUE(writeFile(path_, cut));
        EXPECT_TRUE(append("second"));
        EXPECT_EQ(fileContent(path_), cut + "\r\nsecond\r\n");
    }
}

TEST_F(LogFiles, EmptyFileGetsTheHeader) {
    ASSERT_TRUE(append("first"));
    ASSERT_TRUE(writeFile(path_, ""));
    EXPECT_TRUE(append("second"));
    EXPECT_EQ(fileContent(path_), "header\r\nsecond\r\n");
}

TEST_F(LogFiles, LineOverTheLimitRotatesTheFiles) {
    ASSERT_TRUE(append("first"));
    ASSERT_TRUE(writeFile(olderPath_, "older"));
    EXPECT_TRUE(append("second", 23));
    EXPECT_EQ(fileContent(path_), "header\r\nfirst\r\nsecond\r\n") << "exactly 23 bytes";
    EXPECT_EQ(fileContent(olderPath_), "older");

    EXPECT_TRUE(append("3", 25));
    EXPECT_EQ(fileContent(path_), "header\r\n3\r\n");
    EXPECT_EQ(fileContent(olderPath_), "header\r\nfirst\r\nsecond\r\n");
}

TEST_F(LogFiles, LineLongerThanTheLimitGetsItsOwnFile) {
    const std::string line(100, 'x');
    ASSERT_TRUE(append("first"));
    EXPECT_TRUE(append(line, 50));
    EXPECT_EQ(fileContent(path_), "header\r\n" + line + "\r\n");
    EXPECT_EQ(fileContent(olderPath_), "header\r\nfirst\r\n");
}

TEST_F(LogFiles, FullFileGrowsWhenItCannotBeRenamed) {
    ASSERT_TRUE(append("first"));
    ASSERT_TRUE(writeFile(olderPath_, "older"));
    {
        const FileHandle reader = test::openFile(olderPath_, GENERIC_READ, FILE_SHARE_READ);
        EXPECT_TRUE(append("second", 20));
        EXPECT_EQ(fileContent(path_), "header\r\nfirst\r\nsecond\r\n");
    }
    EXPECT_EQ(fileContent(olderPath_), "older");
    EXPECT_TRUE(append("third", 20));
    EXPECT_EQ(fileContent(path_), "header\r\nthird\r\n");
}

TEST_F(LogFiles, LineForALockedFileIsLostAndTheNextIsWritten) {
    ASSERT_TRUE(append("first"));
    {
        const FileHandle locked = test::openFile(path_, GENERIC_READ, 0);
        EXPECT_FALSE(append("lost"));
    }
    EXPECT_TRUE(append("third"));
    EXPECT_EQ(fileContent(path_), "header\r\nfirst\r\nthird\r\n");
}

TEST_F(LogFiles, LineIsWrittenWhileOtherProcessesHaveTheFileOpen) {
    ASSERT_TRUE(append("first"));
    const FileHandle other =
        test::openFile(path_, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE);
    EXPECT_TRUE(append("second"));
    EXPECT_EQ(fileContent(path_), "header\r\nfirst\r\nsecond\r\n");
}

TEST_F(LogFiles, LineIsLostWhenTheFolderCannotBeCreated) {
    ASSERT_TRUE(writeFile(folder_.file("one"), "a file in place of the folder"));
    EXPECT_FALSE(append("lost"));
    EXPECT_FALSE(appendLine({"", "", "header", 1000}, "lost"));
}

TEST_F(LogFiles, LeaksNoHandle) {
    const auto appendAll = [this] {
        EXPECT_TRUE(append("first", 1));
        EXPECT_FALSE(appendLine({folder_.path(), olderPath_, "header", 1000}, "a folder is no file"));
    };
    appendAll(); // the first call leaves handles open
    const unsigned before = test::handleCount();
    appendAll();
    EXPECT_EQ(test::handleCount(), before);
}

} // namespace
} // namespace base
