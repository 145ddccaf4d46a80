#include "lib/base/files.h"
#include "lib/base/handles.h"
#include "tests/lib/base/filebytes.h"
#include "tests/support/filecontent.h"
#include "tests/support/handlecount.h"
#include "tests/support/importedfunctions.h"
#include "tests/support/temporaryfolder.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <cstdio>
#include <string>

namespace {

bool streamFails = false;

std::FILE* streamUnlessRefused(int descriptor, const char* mode) {
    static const auto original = test::platformFunction<decltype(&_fdopen)>("msvcrt.dll", "_fdopen");
    return streamFails ? nullptr : original(descriptor, mode);
}

} // namespace

SCHEDULER_REPLACE_IMPORT(_fdopen, "__fdopen", streamUnlessRefused);

namespace base {
namespace {

using namespace std::string_view_literals;
using test::bytesOf;
using test::fileContent;
using test::handleCount;
using test::openFile;
using test::TemporaryFolder;
using test::writeWhole;

TEST(WrittenFile, WritesTheBytesAsTheyAre) {
    const TemporaryFolder folder;
    const std::string path = folder.file("file");
    constexpr auto content = "a\nb\r\nc\0d\x1a\xff"sv;
    EXPECT_TRUE(writeWhole(path, content));
    EXPECT_EQ(fileContent(path), content);
}

TEST(WrittenFile, WritesManyBytes) {
    const TemporaryFolder folder;
    const std::string path = folder.file("file");
    const std::string content(1'500'001, '\n');
    EXPECT_TRUE(writeWhole(path, content));
    EXPECT_EQ(fileContent(path), content);
}

TEST(WrittenFile, ReplacesALongerFile) {
    const TemporaryFolder folder;
    const std::string path = folder.file("file");
    ASSERT_TRUE(writeWhole(path, "a longer content"));
    EXPECT_TRUE(writeWhole(path, "short"));
    EXPECT_EQ(fileContent(path), "short");
}

TEST(WrittenFile, NothingMakesAnEmptyFile) {
    const TemporaryFolder folder;
    const std::string path = folder.file("file");
    ASSERT_TRUE(writeWhole(path, "content"));
    EXPECT_TRUE(writeWhole(path, ""));
    EXPECT_TRUE(fileExists(path));
    EXPECT_EQ(fileContent(path), "");
}

TEST(WrittenFile, AProcessStartedMeanwhileDoesNotInheritTheFile) {
    const TemporaryFolder folder;
    const int descriptor = test::nextDescriptor();
    WrittenFile file(folder.file("written"));
    DWORD flags = HANDLE_FLAG_INHERIT;
    EXPECT_TRUE(GetHandleInformation(test::handleOf(descriptor), &flags));
    EXPECT_EQ(flags & HANDLE_FLAG_INHERIT, 0U);
    EXPECT_TRUE(file.close());
}

TEST(WrittenFile, TakesItsContentPieceByPiece) {
    const TemporaryFolder folder;
    const std::string path = folder.file("file");
    WrittenFile file(path);
    EXPECT_TRUE(file.write(bytesOf("one")));
    EXPECT_TRUE(file.write({}));
    EXPECT_TRUE(file.write(bytesOf(", two")));
    EXPECT_TRUE(file.close());
    EXPECT_EQ(fileContent(path), "one, two");
}

TEST(WrittenFile, IsClosedWhenItGoes) {
    const TemporaryFolder folder;
    const std::string path = folder.file("file");
    {
        WrittenFile file(path);
        EXPECT_TRUE(file.write(bytesOf("content")));
    }
    EXPECT_EQ(fileContent(path), "content");
    EXPECT_TRUE(DeleteFileA(path.c_str()));
}

TEST(WrittenFile, TakesNothingWhenItIsNotOpen) {
    const TemporaryFolder folder;
    WrittenFile none(folder.file("missing\\file"));
    EXPECT_FALSE(none.write(bytesOf("content")));
    EXPECT_FALSE(none.close());

    WrittenFile closed(folder.file("file"));
    EXPECT_TRUE(closed.close());
    EXPECT_FALSE(closed.write(bytesOf("content")));
    EXPECT_FALSE(closed.close());
}

TEST(WrittenFile, FailsWhereNoFileCanBe) {
    const TemporaryFolder folder;
    EXPECT_FALSE(writeWhole(folder.file("missing\\file"), "content"));
    EXPECT_FALSE(writeWhole(folder.path(), "content"));
    EXPECT_FALSE(writeWhole("", "content"));
}

TEST(WrittenFile, FailureOnTheWayReleasesTheFile) {
    const TemporaryFolder folder;
    const std::string path = folder.file("file");
    ASSERT_TRUE(writeWhole(path, "first"));
    const unsigned handles = handleCount();
    streamFails = true;
    EXPECT_FALSE(writeWhole(path, "content"));
    streamFails = false;
    EXPECT_EQ(handleCount(), handles);
    EXPECT_TRUE(openFile(path, GENERIC_WRITE, 0)) << "nobody else has it";
    EXPECT_TRUE(writeWhole(path, "again"));
}

TEST(WrittenFile, FailsOnAFileThatAnotherKeepsForItself) {
    const TemporaryFolder folder;
    const std::string path = folder.file("file");
    ASSERT_TRUE(writeWhole(path, "content"));
    {
        const FileHandle other = openFile(path, GENERIC_READ, FILE_SHARE_READ);
        ASSERT_TRUE(other);
        EXPECT_FALSE(writeWhole(path, "new"));
    }
    EXPECT_EQ(fileContent(path), "content");
}

TEST(WrittenFile, ClosesTheFile) {
    const TemporaryFolder folder;
    const std::string path = folder.file("file");
    ASSERT_TRUE(writeWhole(path, "content"));
    EXPECT_TRUE(openFile(path, GENERIC_READ | GENERIC_WRITE, 0));
    EXPECT_TRUE(DeleteFileA(path.c_str()));
}

} // namespace
} // namespace base
