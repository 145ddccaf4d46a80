#include "lib/base/currentdirectory.h"
#include "tests/support/temporaryfolder.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

namespace {

std::wstring current() {
    std::wstring directory(MAX_PATH, L'\0');
    directory.resize(GetCurrentDirectoryW(MAX_PATH, directory.data()));
    return directory;
}

// ANSI functions cannot express the name of `foreign`.
TEST(CurrentDirectory, IsRestoredEvenAfterAnException) {
    const test::TemporaryFolder folder;
    const std::wstring before = current();
    ASSERT_TRUE(SetCurrentDirectoryA(folder.path().c_str()));
    const std::wstring foreign = current() + L"\\\x4e00\x4e8c";
    ASSERT_TRUE(CreateDirectoryW(foreign.c_str(), nullptr));
    for (const std::wstring& directory : {before, foreign}) {
        ASSERT_TRUE(SetCurrentDirectoryW(directory.c_str()));
        for (const bool fails : {false, true}) {
            try {
                const base::CurrentDirectoryGuard kept;
                ASSERT_TRUE(SetCurrentDirectoryA(folder.path().c_str()));
                ASSERT_NE(current(), directory);
                if (fails)
                    throw std::runtime_error("unforeseen");
            } catch (const std::runtime_error&) {
            }
            EXPECT_EQ(current(), directory) << fails;
        }
    }
    SetCurrentDirectoryW(before.c_str());
    EXPECT_TRUE(RemoveDirectoryW(foreign.c_str()));
}

} // namespace
