#pragma once

#include <windows.h>

#include <array>
#include <string>

namespace test {

inline DWORD styleOf(HWND window) {
    return static_cast<DWORD>(GetWindowLongA(window, GWL_STYLE));
}

inline std::string classOf(HWND window) {
    std::array<char, 64> name{};
    GetClassNameA(window, name.data(), static_cast<int>(name.size()));
    return CharLowerA(name.data());
}

inline bool isButton(HWND window, DWORD type) {
    return classOf(window) == "button" && (styleOf(window) & BS_TYPEMASK) == type;
}

inline RECT placeOf(HWND window) {
    RECT place{};
    GetWindowRect(window, &place);
    return place;
}

} // namespace test
