// Included by a test whose disk is full: for the whole program the Windows directory, and with it the
// schedule, is on drive D.
#pragma once

#include "tests/support/importedfunctions.h"

#include <windows.h>

#include <cstring>

namespace test {

inline UINT WINAPI windowsOnDiskD(LPSTR buffer, UINT) {
    std::strcpy(buffer, "D:\\");
    return 3;
}

} // namespace test

SCHEDULER_REPLACE_IMPORT(GetWindowsDirectoryA, "_GetWindowsDirectoryA@8", test::windowsOnDiskD);
