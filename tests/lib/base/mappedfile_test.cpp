#include "lib/base/files.h"
#include "lib/base/handles.h"
#include "tests/lib/base/filebytes.h"
#include "tests/support/filecontent.h"
#include "tests/support/handlecount.h"
#include "tests/support/importedfunctions.h"
#include "tests/support/memoryuse.h"
#include "tests/support/temporaryfolder.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace {

bool mappingFails = false;
bool sizeIsUnknown = false;

LPVOID WINAPI mapUnlessRefused(HANDLE mapping, DWORD access, DWORD high, DWORD low, SIZE_T size) {
    static const auto original =
        test::platformFunction<decltype(&MapViewOfFile)>("kernel32.dll", "MapViewOfFile");
    return mappingFails ? nullptr : original(mapping, access, high, low, size);
}

DWORD WINAPI sizeUnlessUnknown(HANDLE file, LPDWORD high) {
    static const auto original =
        test::platformFunction<decltype(&GetFileSize)>("kernel32.dll", "GetFileSize");
    return sizeIsUnknown ? INVALID_FILE_SIZE : original(file, high);
}

bool mappingObjectFails = false;

HANDLE WINAPI mappingUnlessRefused(HANDLE file, LPSECURITY_ATTRIBUTES security, DWORD protection, DWORD high,
                                   DWORD low, LPCSTR name) {
    static const auto original =
        test::platformFunction<decltype(&CreateFileMappingA)>("kernel32.dll", "CreateFileMappingA");
    return mappingObjectFails ? nullptr : original(file, security, protection, high, low, name);
}

/// How a file was opened last.
struct Opening {
    DWORD access = 0;
    DWORD sharing = 0;
    DWORD disposition = 0;
    DWORD flags = 0;
};
Opening lastOpening;

HANDLE WINAPI notedOpening(LPCSTR path, DWORD access, DWORD sharing, LPSECURITY_ATTRIBUTES security,
                           DWORD disposition, DWORD flags, HANDLE pattern) {
    static const auto original =
        test::platformFunction<decltype(&CreateFileA)>("kernel32.dll", "CreateFileA");
    lastOpening = {access, sharing, disposition, flags};
    return original(path, access, sharing, security, disposition, flags, pattern);
}

} // namespace

SCHEDULER_REPLACE_IMPORT(CreateFileA, "_CreateFileA@28", notedOpening);
SCHEDULER_REPLACE_IMPORT(CreateFileMappingA, "_CreateFileMappingA@24", mappingUnlessRefused);
SCHEDULER_REPLACE_IMPORT(MapViewOfFile, "_MapViewOfFile@20", mapUnlessRefused);
SCHEDULER_REPLACE_IMPORT(GetFileSize, "_GetFileSize@8", sizeUnlessUnknown);

namespace base {
namespace {

using namespace std::string_view_literals;
using test::committedBytes;
using test::handleCount;
using test::openFile;
using test::TemporaryFolder;
using test::textOf;

class MappedFileTest : public testing::Test {
protected:
    std::string make(const std::string& name, std::string_view content) {
        const std::string path = folder_.file(name);
        EXPECT_TRUE(test::writeFile(path, content));
        return path;
    }

    static void expectEmpty(const MappedFile& file) {
        EXPECT_FALSE(file.isOpen());
        EXPECT_EQ(file.size(), 0U);
        EXPECT_TRUE(file.bytes().empty());
        EXPECT_EQ(file.bytes().data(), nullptr);
    }

    TemporaryFolder folder_;
};

TEST_F(MappedFileTest, IsEmptyBeforeItIsOpened) {
    expectEmpty(MappedFile());
}

TEST_F(MappedFileTest, ShowsTheWholeFile) {
    constexpr auto content = "\x1c\xc7\x46\0line\r\nline\n\x1a\xff tail"sv;
    MappedFile file;
    ASSERT_TRUE(file.open(make("schedule.dat", content)));
    EXPECT_TRUE(file.isOpen());
    EXPECT_EQ(file.size(), content.size());
    EXPECT_EQ(textOf(file.bytes()), content);
}

TEST_F(MappedFileTest, ShowsAFileOfManyPages) {
    std::string content;
    while (content.size() < 300'001)
        content += std::to_string(content.size()) + ' ';
    MappedFile file;
    ASSERT_TRUE(file.open(make("large", content)));
    EXPECT_EQ(textOf(file.bytes()), content);
}

TEST_F(MappedFileTest, ViewCannotBeWrittenTo) {
    MappedFile file;
    ASSERT_TRUE(file.open(make("file", "content")));
    MEMORY_BASIC_INFORMATION information{};
    ASSERT_NE(VirtualQuery(file.bytes().data(), &information, sizeof information), 0U);
    EXPECT_EQ(information.Protect, DWORD{PAGE_READONLY});
}

TEST_F(MappedFileTest, IsOpenedToBeReadInOneGo) {
    const std::string path = make("file", "content");
    MappedFile file;
    lastOpening = {};
    ASSERT_TRUE(file.open(path));
    EXPECT_EQ(lastOpening.access, DWORD{GENERIC_READ});
    EXPECT_EQ(lastOpening.sharing, DWORD{FILE_SHARE_READ});
    EXPECT_EQ(lastOpening.disposition, DWORD{OPEN_EXISTING});
    EXPECT_EQ(lastOpening.flags, DWORD{FILE_ATTRIBUTE_NORMAL | FILE_FLAG_SEQUENTIAL_SCAN});
}

TEST_F(MappedFileTest, MissingFileOpensEmpty) {
    MappedFile file;
    EXPECT_FALSE(file.open(folder_.file("missing")));
    expectEmpty(file);
}

TEST_F(MappedFileTest, EmptyFileOpensEmpty) {
    MappedFile file;
    const std::string path = make("empty", "");
    EXPECT_FALSE(file.open(path));
    expectEmpty(file);
    EXPECT_TRUE(DeleteFileA(path.c_str())) << "it is not held open";
}

TEST_F(MappedFileTest, FolderOpensEmpty) {
    MappedFile file;
    EXPECT_FALSE(file.open(folder_.path()));
    expectEmpty(file);
}

TEST_F(MappedFileTest, EmptyPathOpensEmpty) {
    MappedFile file;
    EXPECT_FALSE(file.open(""));
    expectEmpty(file);
}

TEST_F(MappedFileTest, FileThatAnotherKeepsForItselfOpensEmpty) {
    const std::string path = make("file", "content");
    const FileHandle other = openFile(path, GENERIC_READ, 0);
    ASSERT_TRUE(other);
    MappedFile file;
    EXPECT_FALSE(file.open(path));
    expectEmpty(file);
}

TEST_F(MappedFileTest, FileThatAnotherWritesToOpensEmpty) {
    const std::string path = make("file", "content");
    const FileHandle other = openFile(path, GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE);
    ASSERT_TRUE(other);
    MappedFile file;
    EXPECT_FALSE(file.open(path));
    expectEmpty(file);
}

TEST_F(MappedFileTest, FailureOnTheWayReleasesWhatWasOpen) {
    const std::string path = make("file", std::string(1 << 20, 'x'));
    for (bool* const failure : {&mappingObjectFails, &mappingFails, &sizeIsUnknown}) {
        const unsigned handles = handleCount();
        const std::size_t mapped = committedBytes(MEM_MAPPED);
        MappedFile file;
        *failure = true;
        EXPECT_FALSE(file.open(path));
        *failure = false;
        expectEmpty(file);
        EXPECT_EQ(handleCount(), handles);
        EXPECT_LT(committedBytes(MEM_MAPPED), mapped + (1 << 20));
        EXPECT_TRUE(openFile(path, GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE))
            << "nobody else has it";
    }
}

TEST_F(MappedFileTest, LetsReadersInButNotWriters) {
    const std::string path = make("file", "content");
    MappedFile file;
    ASSERT_TRUE(file.open(path));
    EXPECT_TRUE(openFile(path, GENERIC_READ, FILE_SHARE_READ));
    EXPECT_FALSE(openFile(path, GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE));
    EXPECT_FALSE(DeleteFileA(path.c_str()));
}

TEST_F(MappedFileTest, ReadOnlyFileOpens) {
    const std::string path = make("file", "content");
    ASSERT_TRUE(SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_READONLY));
    MappedFile file;
    EXPECT_TRUE(file.open(path));
    SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST_F(MappedFileTest, CloseEmptiesItAndReleasesTheFile) {
    const std::string path = make("file", "content");
    MappedFile file;
    ASSERT_TRUE(file.open(path));
    file.close();
    expectEmpty(file);
    EXPECT_TRUE(DeleteFileA(path.c_str()));
    file.close(); // once more does no harm
    expectEmpty(file);
}

TEST_F(MappedFileTest, DestructionReleasesTheFile) {
    const std::string path = make("file", "content");
    {
        MappedFile file;
        ASSERT_TRUE(file.open(path));
    }
    EXPECT_TRUE(DeleteFileA(path.c_str()));
}

TEST_F(MappedFileTest, OpeningAnotherFileReleasesTheFirst) {
    const std::string first = make("first", "first content");
    const std::string second = make("second", "second");
    MappedFile file;
    ASSERT_TRUE(file.open(first));
    ASSERT_TRUE(file.open(second));
    EXPECT_EQ(textOf(file.bytes()), "second");
    EXPECT_TRUE(DeleteFileA(first.c_str()));
}

TEST_F(MappedFileTest, FailedOpenLeavesNothingOfTheFileBefore) {
    const std::string path = make("file", "content");
    MappedFile file;
    ASSERT_TRUE(file.open(path));
    EXPECT_FALSE(file.open(folder_.file("missing")));
    expectEmpty(file);
    EXPECT_TRUE(DeleteFileA(path.c_str()));
}

TEST_F(MappedFileTest, NoHandleIsLost) {
    const std::string good = make("good", "content");
    const std::string empty = make("empty", "");
    const std::string missing = folder_.file("missing");
    const auto openAll = [&] {
        for (const std::string& path : {good, empty, missing, folder_.path()}) {
            MappedFile file;
            file.open(path);
        }
    };
    openAll(); // whatever the platform keeps from a first time
    const unsigned before = handleCount();
    for (int i = 0; i < 20; ++i)
        openAll();
    EXPECT_EQ(handleCount(), before);
    MappedFile file;
    ASSERT_TRUE(file.open(good));
    EXPECT_GT(handleCount(), before);
    file.close();
    EXPECT_EQ(handleCount(), before);
}

TEST_F(MappedFileTest, NoViewIsLost) {
    const std::string path = make("file", std::string(1 << 20, 'x'));
    const std::size_t before = committedBytes(MEM_MAPPED);
    MappedFile file;
    for (int i = 0; i < 10; ++i)
        ASSERT_TRUE(file.open(path));
    EXPECT_EQ(committedBytes(MEM_MAPPED), before + (1 << 20));
    EXPECT_FALSE(file.open(folder_.file("missing")));
    EXPECT_EQ(committedBytes(MEM_MAPPED), before);
    ASSERT_TRUE(file.open(path));
    file.close();
    EXPECT_EQ(committedBytes(MEM_MAPPED), before);
}

} // namespace
} // namespace base
