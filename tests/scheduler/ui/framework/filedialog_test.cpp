#include "scheduler/ui/framework/filedialog.h"
#include "tests/support/importedfunctions.h"

#include <gtest/gtest.h>

#include <cderr.h>

namespace {

bool libraryIsMissing = true;

UINT WINAPI systemDirectory(LPSTR folder, UINT size) {
    static const auto original =
        test::platformFunction<decltype(&GetSystemDirectoryA)>("kernel32.dll", "GetSystemDirectoryA");
    return libraryIsMissing ? 0 : original(folder, size);
}

TEST(FileDialog, IsThePlatformsOnceItsLibraryCanBeHad) {
    OPENFILENAMEA request{}; // of no size, which the dialog refuses
    EXPECT_FALSE(framework::openFileDialog(request));
    EXPECT_EQ(framework::fileDialogError(), DWORD{CDERR_INITIALIZATION});
    libraryIsMissing = false;
    EXPECT_FALSE(framework::openFileDialog(request));
    EXPECT_EQ(framework::fileDialogError(), DWORD{CDERR_STRUCTSIZE});
}

} // namespace

SCHEDULER_REPLACE_IMPORT(GetSystemDirectoryA, "_GetSystemDirectoryA@8", systemDirectory);
