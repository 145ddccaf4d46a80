#include "lib/base/currentdirectory.h"
#include "tests/support/temporaryfolder.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

namespace {

class CurrentDirectory : public testing::Test {
protected:
    CurrentDirectory() : before_(current()) {}
    ~CurrentDirectory() override { SetCurrentDirectoryW(before_.c_str()); }

    static std::wstring current() {
        std::wstring directory(MAX_PATH, L'\0');
        directory.resize(GetCurrentDirectoryW(MAX_PATH, directory.data()));
        return directory;
    }

    void goElsewhere() const {
        ASSERT_TRUE(SetCurrentDirectoryA(folder_.path().c_str()));
        ASSERT_NE(current(), before_);
    }

    const test::TemporaryFolder folder_;
    const std::wstring before_;
};

TEST_F(CurrentDirectory, IsKept) {
    {
        const base::KeptCurrentDirectory kept;
        goElsewhere();
    }
    EXPECT_EQ(current(), before_);
}

TEST_F(CurrentDirectory, IsKeptThroughAnException) {
    try {
        const base::KeptCurrentDirectory kept;
        goElsewhere();
        throw std::runtime_error("unforeseen");
    } catch (const std::runtime_error&) {
    }
    EXPECT_EQ(current(), before_);
}

TEST_F(CurrentDirectory, OfANameThatTheCodePageLacksIsKept) {
    ASSERT_NO_FATAL_FAILURE(goElsewhere());
    const std::wstring foreign = current() + L"\\\x4e00\x4e8c";
    ASSERT_TRUE(CreateDirectoryW(foreign.c_str(), nullptr));
    ASSERT_TRUE(SetCurrentDirectoryW(foreign.c_str()));
    {
        const base::KeptCurrentDirectory kept;
        goElsewhere();
    }
    EXPECT_EQ(current(), foreign);
    SetCurrentDirectoryW(before_.c_str());
    EXPECT_TRUE(RemoveDirectoryW(foreign.c_str()));
}

} // namespace
