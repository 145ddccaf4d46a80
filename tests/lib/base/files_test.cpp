#include "lib/base/files.h"
#include "tests/lib/base/filebytes.h"
#include "tests/support/filecontent.h"
#include "tests/support/handlecount.h"
#include "tests/support/importedfunctions.h"
#include "tests/support/memoryuse.h"
#include "tests/support/temporaryfolder.h"

#include <windows.h>

#include <gmock/gmock.h>

#include <cstddef>
#include <cstdlib>
#include <optional>
#include <shlobj.h>
#include <string>
#include <string_view>
#include <vector>

namespace {

std::string simulatedWindows; ///< the Windows directory
std::vector<UINT> requestedSizes;

UINT WINAPI simulatedWindowsDirectory(LPSTR buffer, UINT size) {
    requestedSizes.push_back(size);
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
SCHEDULER_STAND_IN("shell32.dll", SHGetFolderPathA, "_SHGetFolderPathA@20");
SCHEDULER_REPLACE_IMPORT(GetWindowsDirectoryA, "_GetWindowsDirectoryA@8", simulatedWindowsDirectory);

namespace base {
namespace {

using namespace std::string_literals;
using namespace test;
using testing::ElementsAre;

std::string textOf(const MappedFile& file) {
    return {reinterpret_cast<const char*>(file.bytes().data()), file.bytes().size()};
}

void expectEmpty(const MappedFile& file) {
    EXPECT_FALSE(file.isOpen());
    EXPECT_EQ(file.size(), 0U);
    EXPECT_TRUE(file.bytes().empty());
    EXPECT_EQ(file.bytes().data(), nullptr);
}

class Files : public testing::Test {
protected:
    std::string make(const std::string& name, std::string_view content = "content") const {
        EXPECT_TRUE(test::writeFile(folder_.file(name), content));
        return folder_.file(name);
    }

    const test::TemporaryFolder folder_;
    const std::string path_ = folder_.file("file");
};

TEST_F(Files, FindsAFileByNameOrPattern) {
    make("news.krb");
    const auto search = [this] {
        for (const char* pattern : {"news.krb", "*.krb", "news.kr?", "n?ws.*", "NEWS.KRB"})
            EXPECT_TRUE(anyFileMatches(folder_.file(pattern))) << pattern;
        for (const char* pattern : {"*.kra", "new.krb", "x?ws.krb", "missing\\*"})
            EXPECT_FALSE(anyFileMatches(folder_.file(pattern))) << pattern;
        EXPECT_FALSE(anyFileMatches(""));
    };
    search(); // the first call leaves a handle open
    const unsigned before = handleCount();
    search();
    EXPECT_EQ(handleCount(), before);
}

TEST_F(Files, FileExistsAcceptsFilesAndFoldersButNoPatterns) {
    EXPECT_TRUE(fileExists(make("news.krb")));
    EXPECT_TRUE(fileExists(folder_.path()));
    for (const char* name : {"news.kra", "missing\\news.krb", "*.krb"})
        EXPECT_FALSE(fileExists(folder_.file(name))) << name;
    EXPECT_FALSE(fileExists(""));
}

TEST_F(Files, WindowsDirectoryRetriesWhen256CharactersAreTooFew) {
    for (const std::size_t length : {8U, 254U, 255U, 256U, 257U, 1000U}) {
        simulatedWindows = "C:\\" + std::string(length - 3, 'w');
        requestedSizes.clear();
        EXPECT_EQ(windowsDirectory(), simulatedWindows + "\\") << length;
        if (length < 256)
            EXPECT_THAT(requestedSizes, ElementsAre(256U));
        else
            EXPECT_THAT(requestedSizes, ElementsAre(256U, length + 2)) << "the reported size plus one";
    }
    simulatedWindows = "C:\\";
    EXPECT_EQ(windowsDirectory(), "C:\\") << "no second backslash";
}

TEST_F(Files, LocalDataDirectoryBelongsToTheUser) {
    EXPECT_EQ(localDataDirectory(), std::getenv("LOCALAPPDATA") + "\\"s);
    EXPECT_TRUE(fileExists(localDataDirectory()));
}

TEST_F(Files, LocalDataDirectoryIsEmptyWhenThePlatformFails) {
    platform::SHGetFolderPathA.answer = E_FAIL;
    EXPECT_EQ(localDataDirectory(), "");
    platform::SHGetFolderPathA.answer.reset();
}

TEST_F(Files, MappedFileShowsTheWholeFileReadOnly) {
    expectEmpty(MappedFile());
    std::string manyPages;
    while (manyPages.size() < 300'001)
        manyPages += std::to_string(manyPages.size()) + ' ';
    for (const std::string& content : {"\x1c\xc7\x46\0line\r\nline\n\x1a\xff tail"s, manyPages}) {
        MappedFile file;
        ASSERT_TRUE(file.open(make("file", content)));
        EXPECT_TRUE(file.isOpen());
        EXPECT_EQ(file.size(), content.size());
        EXPECT_EQ(textOf(file), content);
        MEMORY_BASIC_INFORMATION information{};
        ASSERT_NE(VirtualQuery(file.bytes().data(), &information, sizeof information), 0U);
        EXPECT_EQ(information.Protect, DWORD{PAGE_READONLY});
    }
}

TEST_F(Files, MappedFileStaysEmptyWhenTheFileCannotBeRead) {
    const std::string exclusive = make("exclusive");
    const std::string written = make("written");
    const FileHandle reader = openFile(exclusive, GENERIC_READ, 0);
    const FileHandle writer = openFile(written, GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE);
    ASSERT_TRUE(reader && writer);
    const std::string empty = make("empty", "");
    for (const std::string& path :
         {exclusive, written, empty, folder_.file("missing"), folder_.path(), ""s}) {
        MappedFile file;
        EXPECT_FALSE(file.open(path)) << path;
        expectEmpty(file);
    }
    EXPECT_TRUE(isFree(empty));
}

TEST_F(Files, MappedFileBlocksWritersButNotReaders) {
    const std::string path = make("file");
    ASSERT_TRUE(SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_READONLY));
    MappedFile file;
    ASSERT_TRUE(file.open(path));
    SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_NORMAL);
    EXPECT_TRUE(openFile(path, GENERIC_READ, FILE_SHARE_READ));
    EXPECT_FALSE(openFile(path, GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE));
    EXPECT_FALSE(isFree(path));
}

TEST_F(Files, MappedFileIsReleasedByCloseDestructionAndReopening) {
    const std::string other = make("other", "other content");
    std::optional<MappedFile> file;
    const auto open = [&] {
        file.emplace();
        EXPECT_TRUE(file->open(make("file")));
    };
    open();
    for (int i = 0; i < 2; ++i) {
        file->close();
        expectEmpty(*file);
    }
    EXPECT_TRUE(isFree(path_));
    open();
    file.reset();
    EXPECT_TRUE(isFree(path_));
    open();
    EXPECT_FALSE(file->open(folder_.file("missing")));
    expectEmpty(*file);
    EXPECT_TRUE(isFree(path_));
    open();
    ASSERT_TRUE(file->open(other));
    EXPECT_EQ(textOf(*file), "other content");
    EXPECT_TRUE(isFree(path_));
}

TEST_F(Files, MappedFileIsOpenedForSequentialReading) {
    ASSERT_TRUE(writeWhole(path_, "content"));
    static std::vector<DWORD> requested;
    platform::CreateFileA.onCall = [](LPCSTR, DWORD access, DWORD sharing, LPSECURITY_ATTRIBUTES,
                                      DWORD disposition, DWORD flags, HANDLE) {
        requested = {access, sharing, disposition, flags};
    };
    EXPECT_TRUE(MappedFile().open(path_));
    platform::CreateFileA.onCall = nullptr;
    EXPECT_THAT(requested, ElementsAre(GENERIC_READ, FILE_SHARE_READ, OPEN_EXISTING,
                                       FILE_ATTRIBUTE_NORMAL | FILE_FLAG_SEQUENTIAL_SCAN));
}

TEST_F(Files, MappedFileLeaksNoHandleOrViewAtAnyFailure) {
    constexpr std::size_t size = 1 << 20;
    const std::string good = make("good", std::string(size, 'x'));
    const std::string empty = make("empty", "");
    const auto openAll = [&] {
        for (int step = 0; step < 3; ++step) {
            if (step == 0)
                platform::CreateFileMappingA.answer = nullptr;
            else if (step == 1)
                platform::MapViewOfFile.answer = nullptr;
            else
                platform::GetFileSize.answer = INVALID_FILE_SIZE;
            MappedFile file;
            EXPECT_FALSE(file.open(good)) << step;
            platform::CreateFileMappingA.answer.reset();
            platform::MapViewOfFile.answer.reset();
            platform::GetFileSize.answer.reset();
            expectEmpty(file);
            EXPECT_TRUE(openFile(good, GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE)) << step;
        }
        MappedFile file;
        for (const std::string& path : {good, empty, folder_.file("missing"), folder_.path(), good})
            file.open(path);
        EXPECT_TRUE(file.isOpen());
    };
    openAll(); // the first call leaves handles open
    const unsigned handles = handleCount();
    const std::size_t mapped = committedBytes(MEM_MAPPED);
    openAll();
    EXPECT_EQ(handleCount(), handles);
    EXPECT_EQ(committedBytes(MEM_MAPPED), mapped);
    MappedFile file;
    ASSERT_TRUE(file.open(good));
    EXPECT_EQ(handleCount(), handles + 2);
    EXPECT_EQ(committedBytes(MEM_MAPPED), mapped + size);
}

} // namespace
} // namespace base
