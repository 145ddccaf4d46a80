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
    LONG ticks = 0;     ///< of the main window's timer, taken from the queue
    LONG endedRuns = 0; ///< whose ends the main window has taken from the queue

    DWORD userObjects = 0; ///< when they were counted last
    DWORD gdiObjects = 0;

    BOOL freesTexts = FALSE; ///< whether what the platform loses with each text is freed
    LONG freedTexts = 0;

    std::array<char, 2000> dropped{}; ///< set by the test: names, each with a NUL behind it, and one NUL more
};

/// Registered; sent to a window, it drops the files in the notes there. Only in its own process can every
/// platform's windows be handed a block of memory.
inline constexpr const char* dropMessage = "scheduler test drop";

/// Registered; sent to a window, it has the objects of its process counted.
inline constexpr const char* countMessage = "scheduler test count";

/// Registered; sent to a window, it has the heaps of its process reach the shape that they otherwise reach
/// after many hours: a heap sets room aside for each size of block once that has been asked for often.
inline constexpr const char* settleMessage = "scheduler test settle";

/// Registered; sent to a window, it has freed from then on what the platform loses with each text, if it
/// does.
inline constexpr const char* freeTextsMessage = "scheduler test free texts";

/// Registered; sent to a window, it has its process's cache of drawing contexts filled. Wine keeps as many as
/// windows have ever had one at once, up to some 65, each with what it last drew on, even of a window that is
/// gone.
inline constexpr const char* fillContextsMessage = "scheduler test fill contexts";

/// Registered; sent to a window, it has all of it drawn at once. Another process can only ask for that.
inline constexpr const char* drawMessage = "scheduler test draw";

inline constexpr const char* memoryName = "scheduler test witness";

} // namespace witness
