#include "scheduler/ui/framework/filedialog.h"
#include "tests/scheduler/ui/platformcalls.h"

#include <gtest/gtest.h>

#include <cderr.h>
#include <optional>

namespace {

TEST(FileDialog, FailsUntilThePlatformsLibraryCanBeLoaded) {
    std::optional<test::Override<test::GetSystemDirectoryACall>> missing([](LPSTR, UINT) { return 0U; });
    OPENFILENAMEA request{}; // the dialog rejects lStructSize 0
    EXPECT_FALSE(framework::openFileDialog(request));
    EXPECT_EQ(framework::fileDialogError(), DWORD{CDERR_INITIALIZATION});
    missing.reset();
    EXPECT_FALSE(framework::openFileDialog(request));
    EXPECT_EQ(framework::fileDialogError(), DWORD{CDERR_STRUCTSIZE});
}

} // namespace
