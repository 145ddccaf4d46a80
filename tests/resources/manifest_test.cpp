#include "tests/support/moduleresources.h"

#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace {

using test::resourceBytes;
using testing::HasSubstr;
using testing::Not;

std::string manifest() {
    return std::string(resourceBytes(RT_MANIFEST, 1)); // a program's own manifest has number 1
}

TEST(Manifest, AsksForTheThemedCommonControls) {
    EXPECT_THAT(manifest(), HasSubstr("name=\"Microsoft.Windows.Common-Controls\" version=\"6.0.0.0\""));
}

TEST(Manifest, IsAwareOfTheSystemsResolution) {
    EXPECT_THAT(manifest(), HasSubstr("SMI/2005/WindowsSettings\">true</dpiAware>"));
    EXPECT_TRUE(IsProcessDPIAware());
}

TEST(Manifest, AsksForNoExecutionLevelSoThatALimitedUsersWritesAreRedirected) {
    EXPECT_THAT(manifest(), Not(HasSubstr("requestedExecutionLevel")));
    EXPECT_THAT(manifest(), Not(HasSubstr("trustInfo")));
}

// Without this the other tests' manifest could be one that Windows refuses to read.
TEST(Manifest, IsInForce) {
    ACTCTX_SECTION_KEYED_DATA data{};
    data.cbSize = sizeof data;
    EXPECT_TRUE(FindActCtxSectionStringA(0, nullptr, ACTIVATION_CONTEXT_SECTION_DLL_REDIRECTION,
                                         "comctl32.dll", &data));
}

} // namespace
