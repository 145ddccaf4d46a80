// A message box that is answered at once. Included by a test program at most once.
#pragma once

#include "tests/support/importedfunctions.h"

#include <windows.h>

#include <string>
#include <vector>

namespace test {

struct ShownMessage {
    HWND owner = nullptr;
    std::string text;
    std::string caption;
    UINT flags = 0;
};

inline std::vector<ShownMessage> shownMessages;

inline int WINAPI simulatedMessageBox(HWND owner, LPCSTR text, LPCSTR caption, UINT flags) {
    shownMessages.push_back({owner, text, caption, flags});
    return IDOK;
}

} // namespace test

SCHEDULER_REPLACE_IMPORT(MessageBoxA, "_MessageBoxA@16", test::simulatedMessageBox);
