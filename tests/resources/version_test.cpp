#include "tests/support/moduleresources.h"

#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <sstream>
#include <string>
#include <vector>

namespace {

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

std::string manifest() {
    return std::string(test::resourceBytes(RT_MANIFEST, 1)); // a program's own manifest has number 1
}

/// The program's manifest and version resource.
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

    /// A value of the version resource; null if missing or of another size. Size 0 matches any size.
    const void* value(const std::string& path, UINT size = 0) const {
        void* value = nullptr;
        UINT length = 0;
        const bool isThere = VerQueryValueA(block_.data(), path.c_str(), &value, &length) != 0;
        return isThere && (size == 0 || length == size) ? value : nullptr;
    }
    std::string text(const std::string& name) const {
        const void* const found = value("\\StringFileInfo\\040904E4\\" + name);
        return found ? static_cast<const char*>(found) : "(none)";
    }

    std::vector<char> block_;
    bool loaded_ = false;
};

TEST_F(Version, NamesTheProgramAndItsCompany) {
    EXPECT_EQ(text("CompanyName"), "Brindlewood");
    EXPECT_EQ(text("FileDescription"), "Corvane Scheduler");
    EXPECT_EQ(text("ProductName"), "Corvane Scheduler");
    EXPECT_EQ(text("OriginalFilename"), "scheduler.exe");
}

TEST_F(Version, IsTheSameInTextAndNumbers) {
    EXPECT_EQ(text("FileVersion"), PACKAGE_VERSION);
    EXPECT_EQ(text("ProductVersion"), PACKAGE_VERSION);

    const auto* numbers = static_cast<const VS_FIXEDFILEINFO*>(value("\\", sizeof(VS_FIXEDFILEINFO)));
    ASSERT_TRUE(numbers);
    const auto fields = [](DWORD high, DWORD low) {
        std::ostringstream text;
        text << HIWORD(high) << '.' << LOWORD(high) << '.' << HIWORD(low) << '.' << LOWORD(low);
        return text.str();
    };
    EXPECT_THAT(PACKAGE_VERSION ".0.0",
                StartsWith(fields(numbers->dwFileVersionMS, numbers->dwFileVersionLS)));
    EXPECT_EQ(numbers->dwProductVersionMS, numbers->dwFileVersionMS);
    EXPECT_EQ(numbers->dwProductVersionLS, numbers->dwFileVersionLS);
}

TEST_F(Version, TextsAreInEnglish) {
    const auto* language = static_cast<const DWORD*>(value("\\VarFileInfo\\Translation", sizeof(DWORD)));
    ASSERT_TRUE(language);
    EXPECT_EQ(*language, DWORD{1252 << 16 | 0x0409});
}

TEST_F(Version, TheManifestRequestsThemedControlsAndDpiAwareness) {
    EXPECT_THAT(manifest(), HasSubstr("name=\"Microsoft.Windows.Common-Controls\" version=\"6.0.0.0\""));
    EXPECT_THAT(manifest(), HasSubstr("SMI/2005/WindowsSettings\">true</dpiAware>"));
    EXPECT_TRUE(IsProcessDPIAware());
    // comctl32.dll is redirected only if Windows could parse the manifest.
    ACTCTX_SECTION_KEYED_DATA data{};
    data.cbSize = sizeof data;
    EXPECT_TRUE(FindActCtxSectionStringA(0, nullptr, ACTIVATION_CONTEXT_SECTION_DLL_REDIRECTION,
                                         "comctl32.dll", &data));
}

// With an execution level, Windows would not redirect a limited user's writes to protected places.
TEST_F(Version, TheManifestRequestsNoExecutionLevel) {
    EXPECT_THAT(manifest(), Not(HasSubstr("requestedExecutionLevel")));
    EXPECT_THAT(manifest(), Not(HasSubstr("trustInfo")));
}

} // namespace
