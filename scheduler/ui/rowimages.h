// The images beside the rows of the schedule's list.
#pragma once

#include "lib/base/handles.h"

#include <windows.h>

#include <commctrl.h>

namespace scheduler {

struct ImageListTraits {
    using Handle = HIMAGELIST;
    static Handle none() { return nullptr; }
    static void close(Handle handle) { ImageList_Destroy(handle); }
};
using ImageList = base::UniqueHandle<ImageListTraits>;

/// One image for each RowImage but None, in the largest drawn size of at most `size` pixels, or else the
/// smallest. Null when the platform refuses.
ImageList makeRowImages(int size);

} // namespace scheduler
