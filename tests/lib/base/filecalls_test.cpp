// The calls by which files and the Windows directory are reached, and their failures.
#include "lib/base/files.h"
#include "tests/lib/base/filebytes.h"
#include "tests/support/handlecount.h"
#include "tests/support/importedfunctions.h"
#include "tests/support/memoryuse.h"
#include "tests/support/temporaryfolder.h"

#include <windows.h>

#include <gmock/gmock.h>

#include <cstdio>
#include <shlobj.h>
#include <string>
#include <vector>

namespace {

bool streamFails = false;
std::string simulatedWindows; ///< its directory
std::vector<UINT> askedSizes;

std::FILE* streamOf(int descriptor, const char* mode) {
    static const auto platform = test::platformFunction<decltype(&_fdopen)>("msvcrt.dll", "_fdopen");
    return streamFails ? nullptr : platform(descriptor, mode);
}

UINT WINAPI tellWindows(LPSTR buffer, UINT size) {
    askedSizes.push_back(size);
    if (size <= simulatedWindows.size())
        return static_cast<UINT>(simulatedWindows.size() + 1);
    buffer[simulatedWindows.copy(buffer, size)] = '\0';
    return static_cast<UINT>(simulatedWindows.size());
}

} // namespace

SCHEDULER_STAND_IN("kernel32.dll", CreateFileA, "_CreateFileA@28");
SCHEDULER_STAND_IN("kernel32.dll", CreateFileMappingA, "_CreateFileMappingA@24");
SCHEDULER_STAND_IN("kernel32.dll", MapViewOfFile, "_MapViewOfFile@20");
SCHEDULER_STAND_IN("kernel32.dll", GetFileSize, "_GetFileSize@8");
SCHEDULER_STAND_IN("kernel32.dll", FlushFileBuffers, "_FlushFileBuffers@4");
SCHEDULER_STAND_IN("shell32.dll", SHGetFolderPathA, "_SHGetFolderPathA@20");
SCHEDULER_REPLACE_IMPORT(_fdopen, "__fdopen", streamOf);
SCHEDULER_REPLACE_IMPORT(GetWindowsDirectoryA, "_GetWindowsDirectoryA@8", tellWindows);

namespace base {
namespace {

using test::committedBytes;
using test::handleCount;
using test::openFile;
using test::writeWhole;
using testing::ElementsAre;

class FileCalls : public testing::Test {
protected:
    const test::TemporaryFolder folder_;
    const std::string path_ = folder_.file("file");
};

TEST_F(FileCalls, MappedFileIsOpenedToBeReadFromStartToEnd) {
    ASSERT_TRUE(writeWhole(path_, "content"));
    static std::vector<DWORD> asked;
    platform::CreateFileA.note = [](LPCSTR, DWORD access, DWORD sharing, LPSECURITY_ATTRIBUTES,
                                    DWORD disposition, DWORD flags, HANDLE) {
        asked = {access, sharing, disposition, flags};
    };
    EXPECT_TRUE(MappedFile().open(path_));
    platform::CreateFileA.note = nullptr;
    EXPECT_THAT(asked, ElementsAre(GENERIC_READ, FILE_SHARE_READ, OPEN_EXISTING,
                                   FILE_ATTRIBUTE_NORMAL | FILE_FLAG_SEQUENTIAL_SCAN));
}

TEST_F(FileCalls, MappedFileThatFailsOnTheWayReleasesWhatWasOpen) {
    ASSERT_TRUE(writeWhole(path_, std::string(1 << 20, 'x')));
    for (int step = 0; step < 3; ++step) {
        const unsigned handles = handleCount();
        const std::size_t mapped = committedBytes(MEM_MAPPED);
        if (step == 0)
            platform::CreateFileMappingA.answer = nullptr;
        else if (step == 1)
            platform::MapViewOfFile.answer = nullptr;
        else
            platform::GetFileSize.answer = INVALID_FILE_SIZE;
        MappedFile file;
        EXPECT_FALSE(file.open(path_)) << step;
        platform::CreateFileMappingA.answer.reset();
        platform::MapViewOfFile.answer.reset();
        platform::GetFileSize.answer.reset();
        EXPECT_FALSE(file.isOpen());
        EXPECT_EQ(file.size(), 0U);
        EXPECT_EQ(handleCount(), handles) << step;
        EXPECT_LT(committedBytes(MEM_MAPPED), mapped + (1 << 20)) << step;
        EXPECT_TRUE(openFile(path_, GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE)) << step;
    }
}

TEST_F(FileCalls, WrittenFileWithoutAStreamIsReleased) {
    ASSERT_TRUE(writeWhole(path_, "first"));
    const unsigned handles = handleCount();
    streamFails = true;
    EXPECT_FALSE(writeWhole(path_, "content"));
    streamFails = false;
    EXPECT_EQ(handleCount(), handles);
    EXPECT_TRUE(openFile(path_, GENERIC_WRITE, 0)) << "no one else has it";
    EXPECT_TRUE(writeWhole(path_, "again"));
}

TEST_F(FileCalls, CopyIsOnTheDiskWhenItSucceeds) {
    ASSERT_TRUE(writeWhole(path_, "content"));
    const std::string copy = folder_.file("copy");
    static unsigned flushes = 0;
    platform::FlushFileBuffers.note = [](HANDLE file) {
        EXPECT_EQ(GetFileSize(file, nullptr), 7U) << "all of it is written";
        ++flushes;
    };
    EXPECT_TRUE(copyOver(path_, copy));
    platform::FlushFileBuffers.answer = FALSE;
    EXPECT_FALSE(copyOver(path_, copy));
    platform::FlushFileBuffers.answer.reset();
    platform::FlushFileBuffers.note = nullptr;
    EXPECT_EQ(flushes, 2U);
}

TEST_F(FileCalls, WindowsDirectoryIsAskedForAgainWhen256CharactersAreTooFew) {
    for (const std::size_t length : {8U, 254U, 255U, 256U, 257U, 1000U}) {
        simulatedWindows = "C:\\" + std::string(length - 3, 'w');
        askedSizes.clear();
        EXPECT_EQ(windowsDirectory(), simulatedWindows + "\\") << length;
        if (length < 256)
            EXPECT_THAT(askedSizes, ElementsAre(256U));
        else
            EXPECT_THAT(askedSizes, ElementsAre(256U, length + 2)) << "the size it said, plus one";
    }
    simulatedWindows = "C:\\";
    EXPECT_EQ(windowsDirectory(), "C:\\") << "it has its backslash";
}

TEST_F(FileCalls, LocalDataDirectoryIsEmptyWhenThePlatformDoesNotTell) {
    platform::SHGetFolderPathA.answer = E_FAIL;
    EXPECT_EQ(localDataDirectory(), "");
    platform::SHGetFolderPathA.answer.reset();
}

} // namespace
} // namespace base
