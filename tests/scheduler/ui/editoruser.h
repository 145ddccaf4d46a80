// Simulates a user of the editor. editoruser.cpp replaces the Browse dialog and the phone book.
#pragma once

#include "resources/ids.h"
#include "scheduler/ui/framework/browselayout.h"
#include "tests/scheduler/ui/whileopen.h"

#include <windows.h>

#include <commdlg.h>
#include <prsht.h>

#include <array>
#include <functional>
#include <string>
#include <vector>

namespace test {

/// Called in place of the Browse dialog; returns false if the user cancels.
inline std::function<bool(OPENFILENAMEA&)> browseDialog;

inline int phoneBookQueries = 0;

inline HWND projectPageOf(HWND sheet) {
    return GetDlgItem(sheet, 136);
}
inline HWND schedulePageOf(HWND sheet) {
    return GetDlgItem(sheet, 132);
}

inline void press(HWND dialog, int button) {
    SendDlgItemMessageA(dialog, button, BM_CLICK, 0, 0);
}

/// Presses Browse. The dialog returns `chosen`, which holds file names separated by NULs.
inline void browse(HWND sheet, const std::string& chosen) {
    browseDialog = [&](OPENFILENAMEA& request) {
        chosen.copy(request.lpstrFile, request.nMaxFile);
        request.lpstrFile[chosen.size()] = '\0';
        return true;
    };
    press(projectPageOf(sheet), framework::browseButtonIdOf(IDC_PROJECT_PATH));
}

inline void setPath(HWND sheet, const std::string& path) {
    SetDlgItemTextA(projectPageOf(sheet), IDC_PROJECT_PATH, path.c_str());
}

inline std::vector<std::string> itemTexts(HWND list) {
    std::vector<std::string> texts;
    for (LRESULT item = 0; item < SendMessageA(list, CB_GETCOUNT, 0, 0); ++item) {
        std::array<char, 256> text{};
        SendMessageA(list, CB_GETLBTEXT, static_cast<WPARAM>(item), reinterpret_cast<LPARAM>(text.data()));
        texts.emplace_back(text.data());
    }
    return texts;
}

} // namespace test
