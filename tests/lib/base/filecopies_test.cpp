#include "lib/base/files.h"
#include "tests/lib/base/filebytes.h"
#include "tests/support/filecontent.h"
#include "tests/support/temporaryfolder.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <string>

namespace base {
namespace {

using test::fileContent;
using test::writeFile;

class FileCopies : public testing::Test {
protected:
    FileCopies() { EXPECT_TRUE(writeFile(copy_, "last copy")); }

    const test::TemporaryFolder folder_;
    const std::string source_ = folder_.file("source");
    const std::string copy_ = folder_.file("copy");
};

TEST_F(FileCopies, HoldTheWholeSource) {
    for (const std::string& content : {std::string("a\r\n\0\x1A", 5), std::string("last cop?"),
                                       std::string(300'001, '\n'), std::string("x")}) {
        ASSERT_TRUE(writeFile(source_, content));
        EXPECT_TRUE(copyOver(source_, copy_));
        EXPECT_EQ(fileContent(copy_), content);
    }
    EXPECT_TRUE(copyOver(source_, folder_.file("first copy")));
    EXPECT_EQ(fileContent(folder_.file("first copy")), "x");
    EXPECT_TRUE(test::isFree(source_) && test::isFree(copy_));
}

TEST_F(FileCopies, StayAsTheyAreWithoutASource) {
    EXPECT_FALSE(copyOver(source_, copy_));
    ASSERT_TRUE(writeFile(source_, ""));
    EXPECT_FALSE(copyOver(source_, copy_));
    ASSERT_TRUE(writeFile(source_, "content"));
    const FileHandle other = test::openFile(source_, GENERIC_READ, 0);
    EXPECT_FALSE(copyOver(source_, copy_));
    EXPECT_EQ(fileContent(copy_), "last copy");
}

TEST_F(FileCopies, StayAsTheyAreWhenTheyCannotBeWritten) {
    ASSERT_TRUE(writeFile(source_, "content"));
    {
        const FileHandle other = test::openFile(copy_, GENERIC_READ, FILE_SHARE_READ);
        EXPECT_FALSE(copyOver(source_, copy_));
    }
    EXPECT_EQ(fileContent(copy_), "last copy");
    EXPECT_FALSE(copyOver(source_, folder_.file("missing\\copy")));
    const std::string subfolder = folder_.file("folder");
    ASSERT_TRUE(CreateDirectoryA(subfolder.c_str(), nullptr));
    EXPECT_FALSE(copyOver(source_, subfolder));
}

} // namespace
} // namespace base
