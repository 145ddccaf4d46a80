#include "lib/base/files.h"
#include "tests/lib/base/filebytes.h"
#include "tests/support/filecontent.h"
#include "tests/support/handlecount.h"
#include "tests/support/memoryuse.h"
#include "tests/support/temporaryfolder.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <io.h>
#include <optional>
#include <string>
#include <string_view>

namespace base {
namespace {

using namespace std::string_literals;
using test::bytesOf;
using test::committedBytes;
using test::fileContent;
using test::handleCount;
using test::isFree;
using test::openFile;
using test::writeWhole;

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

// Search

TEST_F(Files, AnyFileMatchesANameOrAPattern) {
    make("news.krb");
    for (const char* pattern : {"news.krb", "*.krb", "news.kr?", "n?ws.*", "NEWS.KRB"})
        EXPECT_TRUE(anyFileMatches(folder_.file(pattern))) << pattern;
    for (const char* pattern : {"*.kra", "new.krb", "x?ws.krb", "missing\\*"})
        EXPECT_FALSE(anyFileMatches(folder_.file(pattern))) << pattern;
    EXPECT_FALSE(anyFileMatches(""));
}

TEST_F(Files, SearchIsClosed) {
    make("file");
    ASSERT_TRUE(anyFileMatches(folder_.file("*")));
    const unsigned before = handleCount();
    for (int i = 0; i < 20; ++i)
        anyFileMatches(folder_.file("*"));
    EXPECT_EQ(handleCount(), before);
}

TEST_F(Files, FileOrFolderExistsButNoPattern) {
    EXPECT_TRUE(fileExists(make("news.krb")));
    EXPECT_TRUE(fileExists(folder_.path()));
    for (const char* name : {"news.kra", "missing\\news.krb", "*.krb"})
        EXPECT_FALSE(fileExists(folder_.file(name))) << name;
    EXPECT_FALSE(fileExists(""));
}

TEST_F(Files, WindowsDirectoryExists) {
    EXPECT_TRUE(windowsDirectory().ends_with('\\'));
    EXPECT_TRUE(fileExists(windowsDirectory() + "win.ini"));
}

TEST_F(Files, LocalDataDirectoryIsThatOfTheUser) {
    EXPECT_EQ(localDataDirectory(), std::getenv("LOCALAPPDATA") + "\\"s);
    EXPECT_TRUE(fileExists(localDataDirectory()));
}

// Mapped files

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

TEST_F(Files, MappedFileStaysEmptyWithoutAFileToRead) {
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

TEST_F(Files, MappedFileLetsReadersInButNotWriters) {
    const std::string path = make("file");
    MappedFile file;
    ASSERT_TRUE(file.open(path));
    EXPECT_TRUE(openFile(path, GENERIC_READ, FILE_SHARE_READ));
    EXPECT_FALSE(openFile(path, GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE));
    EXPECT_FALSE(isFree(path));
}

TEST_F(Files, MappedFileMayBeReadOnly) {
    const std::string path = make("file");
    ASSERT_TRUE(SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_READONLY));
    EXPECT_TRUE(MappedFile().open(path));
    SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST_F(Files, MappedFileIsReleasedByCloseDestructionAndTheNextOpen) {
    const std::string other = make("other", "other content");
    std::optional<MappedFile> file;
    const auto open = [&] {
        file.emplace();
        EXPECT_TRUE(file->open(make("file")));
    };
    open();
    file->close();
    expectEmpty(*file);
    EXPECT_TRUE(isFree(path_));
    file->close();
    expectEmpty(*file);
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

TEST_F(Files, MappedFileLosesNoHandleAndNoView) {
    const std::string good = make("good", std::string(1 << 20, 'x'));
    const std::string empty = make("empty", "");
    const auto openAll = [&] {
        MappedFile file;
        for (const std::string& path : {good, empty, folder_.file("missing"), folder_.path(), good})
            file.open(path);
        EXPECT_TRUE(file.isOpen());
    };
    openAll(); // the platform keeps some from the first time
    const unsigned handles = handleCount();
    const std::size_t mapped = committedBytes(MEM_MAPPED);
    for (int i = 0; i < 20; ++i)
        openAll();
    EXPECT_EQ(handleCount(), handles);
    EXPECT_EQ(committedBytes(MEM_MAPPED), mapped);
    MappedFile file;
    ASSERT_TRUE(file.open(good));
    EXPECT_EQ(handleCount(), handles + 2);
    EXPECT_EQ(committedBytes(MEM_MAPPED), mapped + (1 << 20));
}

// Written files

TEST_F(Files, WrittenFileReplacesTheBytesAndIsReleased) {
    for (const std::string& content :
         {"a\nb\r\nc\0d\x1a\xff"s, std::string(1'500'001, '\n'), "short"s, ""s, "again"s}) {
        EXPECT_TRUE(writeWhole(path_, content));
        EXPECT_TRUE(fileExists(path_));
        EXPECT_EQ(fileContent(path_), content);
        EXPECT_TRUE(openFile(path_, GENERIC_READ | GENERIC_WRITE, 0)) << "no one else has it";
    }
}

TEST_F(Files, WrittenFileTakesPiecesAndIsClosedByItsDestruction) {
    {
        WrittenFile file(path_);
        EXPECT_TRUE(file.write(bytesOf("one")));
        EXPECT_TRUE(file.write({}));
        EXPECT_TRUE(file.write(bytesOf(", two")));
    }
    EXPECT_EQ(fileContent(path_), "one, two");
    EXPECT_TRUE(isFree(path_));
}

/// The descriptor of the file that is opened next: the lowest that is free.
int nextDescriptor() {
    const int descriptor = _dup(_fileno(stderr));
    _close(descriptor);
    return descriptor;
}

HANDLE handleOf(int descriptor) {
    return reinterpret_cast<HANDLE>(_get_osfhandle(descriptor));
}

TEST_F(Files, WrittenFileIsNotInheritedByProcesses) {
    const int descriptor = nextDescriptor();
    const WrittenFile file(path_);
    DWORD flags = HANDLE_FLAG_INHERIT;
    EXPECT_TRUE(GetHandleInformation(handleOf(descriptor), &flags));
    EXPECT_EQ(flags & HANDLE_FLAG_INHERIT, 0U);
}

TEST_F(Files, WrittenFileThatCannotBeClosedFails) {
    const int descriptor = nextDescriptor();
    WrittenFile file(path_);
    ASSERT_TRUE(CloseHandle(handleOf(descriptor)));
    EXPECT_FALSE(file.close());
}

TEST_F(Files, WrittenFileTakesNothingUnlessItIsOpen) {
    WrittenFile closed(path_);
    EXPECT_TRUE(closed.close());
    EXPECT_FALSE(closed.write(bytesOf("content")));
    EXPECT_FALSE(closed.close());
    for (const std::string& path : {folder_.file("missing\\file"), folder_.path(), ""s}) {
        WrittenFile none(path);
        EXPECT_FALSE(none.write(bytesOf("content"))) << path;
        EXPECT_FALSE(none.close()) << path;
    }
}

TEST_F(Files, WrittenFileFailsOnAFileThatAnotherKeeps) {
    const std::string path = make("file");
    const FileHandle other = openFile(path, GENERIC_READ, FILE_SHARE_READ);
    ASSERT_TRUE(other);
    EXPECT_FALSE(writeWhole(path, "new"));
    EXPECT_EQ(fileContent(path), "content");
}

TEST_F(Files, WrittenFileKeepsTheErrorOfTheFirstStepThatFailed) {
    WrittenFile good(path_);
    EXPECT_TRUE(good.write(bytesOf("content")));
    EXPECT_TRUE(good.close());
    EXPECT_FALSE(good.close());
    EXPECT_EQ(good.error(), 0U);
    const FileHandle other = openFile(path_, GENERIC_READ, FILE_SHARE_READ);
    for (const auto& [path, error] : {std::pair{path_, ERROR_SHARING_VIOLATION},
                                      {folder_.file("missing\\file"), ERROR_PATH_NOT_FOUND},
                                      {folder_.path() + ".", ERROR_ACCESS_DENIED}}) {
        WrittenFile refused(path);
        EXPECT_FALSE(refused.isOpen());
        EXPECT_EQ(refused.error(), DWORD(error)) << path;
        EXPECT_FALSE(refused.close());
        EXPECT_EQ(refused.error(), DWORD(error)) << path;
    }
}

} // namespace
} // namespace base
