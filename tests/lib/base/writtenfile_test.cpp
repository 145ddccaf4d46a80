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
#include <io.h>
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

TEST(WriteFile, WritesTheBytesAsTheyAre) {
    const TemporaryFolder folder;
    const std::string path = folder.file("file");
    constexpr auto content = "a\nb\r\nc\0d\x1a\xff"sv;
    EXPECT_TRUE(writeFile(path, bytesOf(content)));
    EXPECT_EQ(fileContent(path), content);
}

TEST(WriteFile, WritesManyBytes) {
    const TemporaryFolder folder;
    const std::string path = folder.file("file");
    const std::string content(1'500'001, '\n');
    EXPECT_TRUE(writeFile(path, bytesOf(content)));
    EXPECT_EQ(fileContent(path), content);
}

TEST(WriteFile, ReplacesALongerFile) {
    const TemporaryFolder folder;
    const std::string path = folder.file("file");
    ASSERT_TRUE(writeFile(path, bytesOf("a longer content")));
    EXPECT_TRUE(writeFile(path, bytesOf("short")));
    EXPECT_EQ(fileContent(path), "short");
}

TEST(WriteFile, NothingMakesAnEmptyFile) {
    const TemporaryFolder folder;
    const std::string path = folder.file("file");
    ASSERT_TRUE(writeFile(path, bytesOf("content")));
    EXPECT_TRUE(writeFile(path, {}));
    EXPECT_TRUE(fileExists(path));
    EXPECT_EQ(fileContent(path), "");
}

TEST(WriteFile, AProcessStartedMeanwhileDoesNotInheritTheFile) {
    const TemporaryFolder folder;
    const base::WrittenFile file(folder.file("written"));
    ASSERT_NE(file.stream(), nullptr);
    DWORD flags = HANDLE_FLAG_INHERIT;
    EXPECT_TRUE(
        GetHandleInformation(reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(file.stream()))), &flags));
    EXPECT_EQ(flags & HANDLE_FLAG_INHERIT, 0U);
}

TEST(WrittenFile, TakesItsContentPieceByPiece) {
    const TemporaryFolder folder;
    const std::string path = folder.file("file");
    base::WrittenFile file(path);
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
        base::WrittenFile file(path);
        EXPECT_TRUE(file.write(bytesOf("content")));
    }
    EXPECT_EQ(fileContent(path), "content");
    EXPECT_TRUE(DeleteFileA(path.c_str()));
}

TEST(WrittenFile, TakesNothingWhenItIsNotOpen) {
    const TemporaryFolder folder;
    base::WrittenFile none(folder.file("missing\\file"));
    EXPECT_FALSE(none.write(bytesOf("content")));
    EXPECT_FALSE(none.close());

    base::WrittenFile closed(folder.file("file"));
    EXPECT_TRUE(closed.close());
    EXPECT_FALSE(closed.write(bytesOf("content")));
    EXPECT_FALSE(closed.close());
}

TEST(WriteFile, FailsWhereNoFileCanBe) {
    const TemporaryFolder folder;
    EXPECT_FALSE(writeFile(folder.file("missing\\file"), bytesOf("content")));
    EXPECT_FALSE(writeFile(folder.path(), bytesOf("content")));
    EXPECT_FALSE(writeFile("", bytesOf("content")));
}

TEST(WriteFile, FailureOnTheWayReleasesTheFile) {
    const TemporaryFolder folder;
    const std::string path = folder.file("file");
    ASSERT_TRUE(writeFile(path, bytesOf("first")));
    const unsigned handles = handleCount();
    streamFails = true;
    EXPECT_FALSE(writeFile(path, bytesOf("content")));
    streamFails = false;
    EXPECT_EQ(handleCount(), handles);
    EXPECT_TRUE(openFile(path, GENERIC_WRITE, 0)) << "nobody else has it";
    EXPECT_TRUE(writeFile(path, bytesOf("again")));
}

TEST(WriteFile, FailsOnAFileThatAnotherKeepsForItself) {
    const TemporaryFolder folder;
    const std::string path = folder.file("file");
    ASSERT_TRUE(writeFile(path, bytesOf("content")));
    {
        const FileHandle other = openFile(path, GENERIC_READ, FILE_SHARE_READ);
        ASSERT_TRUE(other);
        EXPECT_FALSE(writeFile(path, bytesOf("new")));
    }
    EXPECT_EQ(fileContent(path), "content");
}

TEST(WriteFile, ClosesTheFile) {
    const TemporaryFolder folder;
    const std::string path = folder.file("file");
    ASSERT_TRUE(writeFile(path, bytesOf("content")));
    EXPECT_TRUE(openFile(path, GENERIC_READ | GENERIC_WRITE, 0));
    EXPECT_TRUE(DeleteFileA(path.c_str()));
}

} // namespace
} // namespace base
