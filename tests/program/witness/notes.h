// What the witness writes down, in memory that it shares with the test.
#pragma once

#include <windows.h>

#include <array>

namespace witness {

struct MenuItem {
    UINT command = 0; ///< 0 for a separator
    UINT state = 0;   ///< MFS_... flags
    std::array<char, 60> text{};
};

struct Notes {
    HWND painted = nullptr; ///< set by the test: whose paintings are counted
    LONG paints = 0;

    LONG menus = 0; ///< popup menus that have opened
    LONG itemCount = 0;
    std::array<MenuItem, 16> items; ///< of the menu that has opened last, as its user sees it

    LONG commands = 0; ///< commands sent to the main window
    UINT lastCommand = 0;
    LONG ticks = 0; ///< of the main window's timer, taken from the queue

    DWORD userObjects = 0; ///< when they were counted last
    DWORD gdiObjects = 0;

    BOOL freesTexts = FALSE; ///< whether what the platform loses with each text is freed
    LONG freedTexts = 0;

    std::array<char, 2000> dropped{}; ///< set by the test: names, each with a NUL behind it, and one NUL more
};

/// What the witness does inside the process when the registered message is sent to a window with one of these.
enum class Act : WPARAM {
    Drop,        ///< drops the files in the notes there: each platform's windows take a block of their own process
    Count,       ///< counts the objects of the process
    SettleHeaps, ///< makes the heaps cache room for each size of block, as they otherwise do after many hours
    FreeTexts,   ///< from then on frees what the platform leaks with each text, if it does
    /// Fills the process's cache of drawing contexts. Wine keeps as many as windows have ever had one at once, up to
    /// some 65, each with what it last drew on, even of a window that is gone.
    FillContexts,
    Draw, ///< draws all of the window at once; another process can only ask for that
};
inline constexpr const char* actMessage = "scheduler test act";

inline constexpr const char* memoryName = "scheduler test witness";

} // namespace witness
