// Frees memory that Wine's text controls leak, so that leak tests measure only the program.
#pragma once

#include <windows.h>

#include <cstdint>
#include <cstring>

namespace test {

/// The block in which newer versions of Wine keep the font of a text control, or null. Wine frees the block
/// only for icon controls.
inline void* blockOfText(HWND text) {
    void* const block = reinterpret_cast<void*>(static_cast<std::uintptr_t>(GetWindowLongA(text, 0)));
    return block && HeapValidate(GetProcessHeap(), 0, block) ? block : nullptr;
}

/// Whether destroyed text controls leak this block.
inline bool textControlsLeak() {
    const HWND text =
        CreateWindowExA(0, "Static", "", WS_POPUP, 0, 0, 0, 0, nullptr, nullptr, nullptr, nullptr);
    SendMessageA(text, WM_SETFONT, reinterpret_cast<WPARAM>(GetStockObject(DEFAULT_GUI_FONT)), FALSE);
    void* const block = blockOfText(text);
    DestroyWindow(text);
    if (!block || !HeapValidate(GetProcessHeap(), 0, block))
        return false;
    HeapFree(GetProcessHeap(), 0, block);
    return true;
}

/// Call for each sent message if textControlsLeak(). True if a block was freed.
inline bool freeLeakedBlock(const CWPSTRUCT& message) {
    if (message.message != WM_NCDESTROY)
        return false;
    char name[sizeof("Static") + 1] = {};
    GetClassNameA(message.hwnd, name, sizeof(name));
    if (_stricmp(name, "Static") != 0 || (GetWindowLongA(message.hwnd, GWL_STYLE) & SS_TYPEMASK) == SS_ICON)
        return false;
    void* const block = blockOfText(message.hwnd);
    if (!block)
        return false;
    SetWindowLongA(message.hwnd, 0, 0);
    HeapFree(GetProcessHeap(), 0, block);
    return true;
}

} // namespace test
