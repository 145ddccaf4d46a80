#include "lib/base/files.h"
#include "tests/support/filecontent.h"
#include "tests/support/handlecount.h"
#include "tests/support/importedfunctions.h"
#include "tests/support/temporaryfolder.h"

#include <windows.h>

#include <gmock/gmock.h>

#include <cstddef>
#include <string>
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

} // namespace

SCHEDULER_REPLACE_IMPORT(GetWindowsDirectoryA, "_GetWindowsDirectoryA@8", windowsDirectoryToTell);

namespace base {
namespace {

using test::handleCount;
using test::TemporaryFolder;

TEST(AnyFileMatches, FindsByNameAndByPattern) {
    const TemporaryFolder folder;
    ASSERT_TRUE(test::writeFile(folder.file("news.krb"), ""));
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
    ASSERT_TRUE(test::writeFile(folder.file("file"), ""));
    ASSERT_TRUE(anyFileMatches(folder.file("*")));
    const unsigned before = handleCount();
    for (int i = 0; i < 20; ++i)
        anyFileMatches(folder.file("*"));
    EXPECT_EQ(handleCount(), before);
}

TEST(FileExists, KnowsFilesAndFoldersButNoPatterns) {
    const TemporaryFolder folder;
    ASSERT_TRUE(test::writeFile(folder.file("news.krb"), ""));
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
