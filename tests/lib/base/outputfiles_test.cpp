#include "lib/base/files.h"
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
#include <utility>

SCHEDULER_STAND_IN("kernel32.dll", FlushFileBuffers, "_FlushFileBuffers@4");
SCHEDULER_STAND_IN("msvcrt.dll", _fdopen, "__fdopen");

namespace base {
namespace {

using namespace std::string_literals;
using namespace test;

class OutputFiles : public testing::Test {
protected:
    OutputFiles() { EXPECT_TRUE(writeFile(copy_, "last copy")); }

    const TemporaryFolder folder_;
    const std::string path_ = folder_.file("file");
    const std::string copy_ = folder_.file("copy");
};

TEST_F(OutputFiles, WriteReplacesTheContentAndReleasesTheFile) {
    for (const std::string& content :
         {"a\nb\r\nc\0d\x1a\xff"s, std::string(1'500'001, '\n'), "short"s, ""s, "again"s}) {
        EXPECT_TRUE(writeWhole(path_, content));
        EXPECT_TRUE(fileExists(path_));
        EXPECT_EQ(fileContent(path_), content);
        EXPECT_TRUE(openFile(path_, GENERIC_READ | GENERIC_WRITE, 0)) << "the file is still open";
    }
}

TEST_F(OutputFiles, PiecesAreAppendedAndTheDestructorClosesTheFile) {
    {
        OutputFile file(path_);
        EXPECT_TRUE(file.write(bytesOf("one")));
        EXPECT_TRUE(file.write({}));
        EXPECT_TRUE(file.write(bytesOf(", two")));
    }
    EXPECT_EQ(fileContent(path_), "one, two");
    EXPECT_TRUE(isFree(path_));
}

/// The lowest free descriptor, which the next opened file gets.
int nextDescriptor() {
    const int descriptor = _dup(_fileno(stderr));
    _close(descriptor);
    return descriptor;
}

TEST_F(OutputFiles, HandleIsNotInheritedAndAFailedCloseIsReported) {
    const int descriptor = nextDescriptor();
    OutputFile file(path_);
    const auto handle = reinterpret_cast<HANDLE>(_get_osfhandle(descriptor));
    DWORD flags = HANDLE_FLAG_INHERIT;
    EXPECT_TRUE(GetHandleInformation(handle, &flags));
    EXPECT_EQ(flags & HANDLE_FLAG_INHERIT, 0U);
    ASSERT_TRUE(CloseHandle(handle));
    EXPECT_FALSE(file.close());
}

TEST_F(OutputFiles, WritesFailUnlessTheFileIsOpen) {
    OutputFile closed(path_);
    EXPECT_TRUE(closed.close());
    EXPECT_FALSE(closed.write(bytesOf("content")));
    EXPECT_FALSE(closed.close());
    for (const std::string& path : {folder_.file("missing\\file"), folder_.path(), ""s}) {
        OutputFile none(path);
        EXPECT_FALSE(none.write(bytesOf("content"))) << path;
        EXPECT_FALSE(none.close()) << path;
    }
}

TEST_F(OutputFiles, WriteFailsWhileTheFileIsLocked) {
    ASSERT_TRUE(writeFile(path_, "content"));
    const FileHandle other = openFile(path_, GENERIC_READ, FILE_SHARE_READ);
    ASSERT_TRUE(other);
    EXPECT_FALSE(writeWhole(path_, "new"));
    EXPECT_EQ(fileContent(path_), "content");
}

TEST_F(OutputFiles, FileIsReleasedWhenTheStreamCannotBeCreated) {
    ASSERT_TRUE(writeWhole(path_, "first"));
    const unsigned handles = handleCount();
    platform::_fdopen.answer = nullptr;
    EXPECT_FALSE(writeWhole(path_, "content"));
    platform::_fdopen.answer.reset();
    EXPECT_EQ(handleCount(), handles);
    EXPECT_TRUE(openFile(path_, GENERIC_WRITE, 0)) << "the file is still open";
    EXPECT_TRUE(writeWhole(path_, "again"));
}

TEST_F(OutputFiles, FirstErrorIsKept) {
    OutputFile good(path_);
    EXPECT_TRUE(good.write(bytesOf("content")));
    EXPECT_TRUE(good.close());
    EXPECT_FALSE(good.close());
    EXPECT_EQ(good.error(), 0U);
    const FileHandle other = openFile(path_, GENERIC_READ, FILE_SHARE_READ);
    for (const auto& [path, error] : {std::pair{path_, ERROR_SHARING_VIOLATION},
                                      {folder_.file("missing\\file"), ERROR_PATH_NOT_FOUND},
                                      {folder_.path() + ".", ERROR_ACCESS_DENIED}}) {
        OutputFile refused(path);
        EXPECT_FALSE(refused.isOpen());
        EXPECT_EQ(refused.error(), DWORD(error)) << path;
        EXPECT_FALSE(refused.close());
        EXPECT_EQ(refused.error(), DWORD(error)) << path;
    }
}

TEST_F(OutputFiles, CopyHasTheWholeSource) {
    for (const std::string& content : {std::string("a\r\n\0\x1A", 5), std::string("last cop?"),
                                       std::string(300'001, '\n'), std::string("x")}) {
        ASSERT_TRUE(writeFile(path_, content));
        EXPECT_TRUE(copyOver(path_, copy_));
        EXPECT_EQ(fileContent(copy_), content);
    }
    EXPECT_TRUE(copyOver(path_, folder_.file("first copy")));
    EXPECT_EQ(fileContent(folder_.file("first copy")), "x");
    EXPECT_TRUE(isFree(path_) && isFree(copy_));
}

TEST_F(OutputFiles, CopyIsUnchangedWhenTheSourceCannotBeRead) {
    EXPECT_FALSE(copyOver(path_, copy_));
    ASSERT_TRUE(writeFile(path_, ""));
    EXPECT_FALSE(copyOver(path_, copy_));
    ASSERT_TRUE(writeFile(path_, "content"));
    const FileHandle other = openFile(path_, GENERIC_READ, 0);
    EXPECT_FALSE(copyOver(path_, copy_));
    EXPECT_EQ(fileContent(copy_), "last copy");
}

TEST_F(OutputFiles, CopyIsUnchangedWhenItCannotBeWritten) {
    ASSERT_TRUE(writeFile(path_, "content"));
    {
        const FileHandle other = openFile(copy_, GENERIC_READ, FILE_SHARE_READ);
        EXPECT_FALSE(copyOver(path_, copy_));
    }
    EXPECT_EQ(fileContent(copy_), "last copy");
    EXPECT_FALSE(copyOver(path_, folder_.file("missing\\copy")));
    const std::string subfolder = folder_.file("folder");
    ASSERT_TRUE(CreateDirectoryA(subfolder.c_str(), nullptr));
    EXPECT_FALSE(copyOver(path_, subfolder));
}

TEST_F(OutputFiles, CopyIsFlushedToDisk) {
    ASSERT_TRUE(writeWhole(path_, "content"));
    static unsigned flushes = 0;
    platform::FlushFileBuffers.onCall = [](HANDLE file) {
        EXPECT_EQ(GetFileSize(file, nullptr), 7U) << "flushed before everything was written";
        ++flushes;
    };
    EXPECT_TRUE(copyOver(path_, copy_));
    platform::FlushFileBuffers.answer = FALSE;
    EXPECT_FALSE(copyOver(path_, copy_));
    platform::FlushFileBuffers.answer.reset();
    platform::FlushFileBuffers.onCall = nullptr;
    EXPECT_EQ(flushes, 2U);
}

} // namespace
} // namespace base
