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

/// An image per RowImage but None: the largest size up to `size` pixels, else the smallest. Null on failure.
ImageList makeRowImages(int size);

} // namespace scheduler
