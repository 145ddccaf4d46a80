// The memory that the witness shares with the test.
#pragma once

#include <windows.h>

namespace witness {

struct Notes {
    LONG ticks = 0; ///< of the main window's timer, taken from the queue

    DWORD userObjects = 0; ///< when they were counted last
    DWORD gdiObjects = 0;

    BOOL freesTexts = FALSE; ///< whether what the platform loses with each text is freed
    LONG freedTexts = 0;
};

/// Parameters of the registered message, on which the witness acts.
enum class Act : WPARAM {
    Count,       ///< counts the objects of the process
    SettleHeaps, ///< makes the heaps cache room for each size of block, as they otherwise do after many hours
    FreeTexts,   ///< from then on frees what the platform leaks with each text, if it does
    /// Fills the cache of drawing contexts, where Wine keeps up to some 65, each with its last bitmap.
    FillContexts,
    Draw, ///< draws all of the window at once; another process can only ask for that
};
inline constexpr const char* actMessage = "scheduler test act";

inline constexpr const char* memoryName = "scheduler test witness";

} // namespace witness
