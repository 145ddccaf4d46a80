#include <windows.h>

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

namespace {

class Version : public testing::Test {
protected:
    Version() {
        std::array<char, MAX_PATH> program{};
        GetModuleFileNameA(nullptr, program.data(), static_cast<DWORD>(program.size()));
        DWORD ignored = 0;
        block_.resize(GetFileVersionInfoSizeA(program.data(), &ignored));
        loaded_ = GetFileVersionInfoA(program.data(), 0, static_cast<DWORD>(block_.size()), block_.data());
    }

    void SetUp() override { ASSERT_TRUE(loaded_); }

    std::string text(const std::string& name) {
        void* value = nullptr;
        UINT length = 0;
        const std::string path = "\\StringFileInfo\\040904E4\\" + name;
        return VerQueryValueA(block_.data(), path.c_str(), &value, &length) ? static_cast<const char*>(value)
                                                                            : "(none)";
    }

    std::vector<char> block_;
    bool loaded_ = false;
};

TEST_F(Version, NamesProgramAndMaker) {
    EXPECT_EQ(text("CompanyName"), "Brindlewood");
    EXPECT_EQ(text("FileDescription"), "Corvane Scheduler");
    EXPECT_EQ(text("ProductName"), "Corvane Scheduler");
    EXPECT_EQ(text("OriginalFilename"), "scheduler.exe");
}

TEST_F(Version, IsTheSameInTextAndNumbers) {
    EXPECT_EQ(text("FileVersion"), "1.34");
    EXPECT_EQ(text("ProductVersion"), "1.34");

    void* value = nullptr;
    UINT length = 0;
    ASSERT_TRUE(VerQueryValueA(block_.data(), "\\", &value, &length));
    ASSERT_EQ(length, sizeof(VS_FIXEDFILEINFO));
    const auto& numbers = *static_cast<const VS_FIXEDFILEINFO*>(value);
    EXPECT_EQ(numbers.dwFileVersionMS, DWORD{1 << 16 | 34});
    EXPECT_EQ(numbers.dwFileVersionLS, 0U);
    EXPECT_EQ(numbers.dwProductVersionMS, DWORD{1 << 16 | 34});
}

TEST_F(Version, SaysWhichLanguageItsTextsAreIn) {
    void* value = nullptr;
    UINT length = 0;
    ASSERT_TRUE(VerQueryValueA(block_.data(), "\\VarFileInfo\\Translation", &value, &length));
    ASSERT_EQ(length, sizeof(DWORD));
    EXPECT_EQ(*static_cast<const DWORD*>(value), DWORD{1252 << 16 | 0x0409});
}

} // namespace
