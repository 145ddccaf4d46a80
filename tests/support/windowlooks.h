// What can be asked of any window, as tests need it.
#pragma once

#include <windows.h>

#include <array>
#include <string>

namespace test {

inline DWORD styleOf(HWND window) {
    return static_cast<DWORD>(GetWindowLongA(window, GWL_STYLE));
}

/// The name of its class in small letters.
inline std::string classOf(HWND window) {
    std::array<char, 64> name{};
    GetClassNameA(window, name.data(), static_cast<int>(name.size()));
    return CharLowerA(name.data());
}

/// Whether it is a button of a type: BS_GROUPBOX and so on.
inline bool isButton(HWND window, DWORD type) {
    return classOf(window) == "button" && (styleOf(window) & BS_TYPEMASK) == type;
}

/// Its rectangle on the screen.
inline RECT placeOf(HWND window) {
    RECT place{};
    GetWindowRect(window, &place);
    return place;
}

} // namespace test
