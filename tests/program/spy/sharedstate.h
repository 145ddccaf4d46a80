#pragma once

#include <windows.h>

namespace spy {

struct SharedState {
    LONG ticks = 0; ///< timer messages that the main window has retrieved

    DWORD userObjects = 0; // as of the last Request::Count
    DWORD gdiObjects = 0;

    BOOL freesLeakedBlocks = FALSE; ///< set by Request::FreeTexts
    LONG freedTexts = 0;
};

/// wParam of the message registered as requestMessage.
enum class Request : WPARAM {
    Count,       ///< counts the windows, menus and graphics objects of the process
    SettleHeaps, ///< fills the heaps' caches of blocks, as hours of use would
    FreeTexts,   ///< from now on, frees the block that the platform leaks with each text control
    /// Uses all of Wine's about 65 cached device contexts, so that none keeps an old bitmap.
    FillContexts,
    Draw, ///< redraws the window at once, which another process cannot do
};
inline constexpr const char* requestMessage = "scheduler test request";

inline constexpr const char* memoryName = "scheduler test spy";

} // namespace spy
