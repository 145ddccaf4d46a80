#include "lib/base/files.h"
#include "lib/base/handles.h"
#include "tests/support/filecontent.h"
#include "tests/support/handlecount.h"
#include "tests/support/importedfunctions.h"
#include "tests/support/memoryuse.h"
#include "tests/support/temporaryfolder.h"

#include <windows.h>

#include <gmock/gmock.h>

#include <io.h>
#include <string>
#include <string_view>
#include <vector>

namespace {

/// Where Windows is, when a test says so.
std::string simulatedWindows;
std::vector<UINT> askedSizes;

UINT WINAPI windowsDirectoryToTell(LPSTR buffer, UINT size) {
    static const auto original =
        test::platformFunction<decltype(&GetWindowsDirectoryA)>("kernel32.dll", "GetWindowsDirectoryA");
    if (simulatedWindows.empty())
        return original(buffer, size);
    askedSizes.push_back(size);
    if (size <= simulatedWindows.size())
        return static_cast<UINT>(simulatedWindows.size() + 1);
    buffer[simulatedWindows.copy(buffer, size)] = '\0';
    return static_cast<UINT>(simulatedWindows.size());
}

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
bool streamFails = false;

HANDLE WINAPI mappingUnlessRefused(HANDLE file, LPSECURITY_ATTRIBUTES security, DWORD protection, DWORD high,
                                   DWORD low, LPCSTR name) {
    static const auto original =
        test::platformFunction<decltype(&CreateFileMappingA)>("kernel32.dll", "CreateFileMappingA");
    return mappingObjectFails ? nullptr : original(file, security, protection, high, low, name);
}

std::FILE* streamUnlessRefused(int descriptor, const char* mode) {
    static const auto original = test::platformFunction<decltype(&_fdopen)>("msvcrt.dll", "_fdopen");
    return streamFails ? nullptr : original(descriptor, mode);
}

} // namespace

SCHEDULER_REPLACE_IMPORT(CreateFileMappingA, "_CreateFileMappingA@24", mappingUnlessRefused);
SCHEDULER_REPLACE_IMPORT(_fdopen, "__fdopen", streamUnlessRefused);
SCHEDULER_REPLACE_IMPORT(MapViewOfFile, "_MapViewOfFile@20", mapUnlessRefused);
SCHEDULER_REPLACE_IMPORT(GetFileSize, "_GetFileSize@8", sizeUnlessUnknown);
SCHEDULER_REPLACE_IMPORT(GetWindowsDirectoryA, "_GetWindowsDirectoryA@8", windowsDirectoryToTell);

namespace base {
namespace {

using test::committedBytes;
using test::fileContent;
using test::handleCount;
using test::TemporaryFolder;
using namespace std::string_view_literals;

std::span<const std::byte> bytesOf(std::string_view text) {
    return std::as_bytes(std::span(text.data(), text.size()));
}

std::string_view textOf(std::span<const std::byte> bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

FileHandle openFile(const std::string& path, DWORD access, DWORD sharing) {
    return FileHandle(
        CreateFileA(path.c_str(), access, sharing, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
}

class MappedFileTest : public testing::Test {
protected:
    std::string make(const std::string& name, std::string_view content) {
        const std::string path = folder_.file(name);
        EXPECT_TRUE(writeFile(path, bytesOf(content)));
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

TEST(AnyFileMatches, FindsByNameAndByPattern) {
    const TemporaryFolder folder;
    ASSERT_TRUE(writeFile(folder.file("news.krb"), {}));
    const struct {
        const char* pattern;
        bool found;
    } rows[] = {
        {"news.krb", true}, {"*.krb", true},     {"news.kr?", true},
        {"n?ws.*", true},   {"NEWS.KRB", true},  {"*.kra", false},
        {"new.krb", false}, {"x?ws.krb", false}, {"missing\\*", false},
    };
    for (const auto& row : rows)
        EXPECT_EQ(anyFileMatches(folder.file(row.pattern)), row.found) << row.pattern;
    EXPECT_FALSE(anyFileMatches(""));
}

TEST(AnyFileMatches, ClosesItsSearch) {
    const TemporaryFolder folder;
    ASSERT_TRUE(writeFile(folder.file("file"), {}));
    ASSERT_TRUE(anyFileMatches(folder.file("*")));
    const unsigned before = handleCount();
    for (int i = 0; i < 20; ++i)
        anyFileMatches(folder.file("*"));
    EXPECT_EQ(handleCount(), before);
}

TEST(FileExists, KnowsFilesAndFoldersButNoPatterns) {
    const TemporaryFolder folder;
    ASSERT_TRUE(writeFile(folder.file("news.krb"), {}));
    EXPECT_TRUE(fileExists(folder.file("news.krb")));
    EXPECT_TRUE(fileExists(folder.path()));
    EXPECT_FALSE(fileExists(folder.file("news.kra")));
    EXPECT_FALSE(fileExists(folder.file("missing\\news.krb")));
    EXPECT_FALSE(fileExists(folder.file("*.krb")));
    EXPECT_FALSE(fileExists(""));
}

TEST(WindowsDirectory, IsThePlatformsWithOneBackslashBehindIt) {
    char platforms[MAX_PATH] = {};
    ASSERT_NE(GetWindowsDirectoryA(platforms, sizeof platforms), 0U);
    std::string expected = platforms;
    if (!expected.ends_with('\\'))
        expected += '\\';
    EXPECT_EQ(windowsDirectory(), expected);
    EXPECT_TRUE(fileExists(windowsDirectory()));
}

TEST(WindowsDirectory, GetsABackslashUnlessItHasOne) {
    for (const char* directory : {"C:\\WINNT", "C:\\"}) {
        simulatedWindows = directory;
        EXPECT_EQ(windowsDirectory(),
                  std::string(directory) + (simulatedWindows.ends_with('\\') ? "" : "\\"));
    }
    simulatedWindows.clear();
}

TEST(WindowsDirectory, IsAskedForAgainWhen256CharactersAreTooFew) {
    for (const std::size_t length : {254U, 255U, 256U, 257U, 1000U}) {
        simulatedWindows = "C:\\" + std::string(length - 3, 'w');
        askedSizes.clear();
        EXPECT_EQ(windowsDirectory(), simulatedWindows + "\\") << length;
        if (length < 256)
            EXPECT_THAT(askedSizes, testing::ElementsAre(256U));
        else
            EXPECT_THAT(askedSizes, testing::ElementsAre(256U, length + 2)) << "the size it said, plus one";
    }
    simulatedWindows.clear();
}

} // namespace
} // namespace base
