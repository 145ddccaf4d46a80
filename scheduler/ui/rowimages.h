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

/// The images for all values of RowImage except None, in the largest available size up to `size` pixels, else
/// the smallest. Null on failure.
ImageList makeRowImages(int size);

} // namespace scheduler
