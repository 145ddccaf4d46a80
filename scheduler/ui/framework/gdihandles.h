#pragma once

#include "lib/base/handles.h"

#include <windows.h>

namespace framework {

struct MemoryContextTraits {
    using Handle = HDC;
    static Handle none() { return nullptr; }
    static void close(Handle handle) { DeleteDC(handle); }
};
using MemoryContext = base::UniqueHandle<MemoryContextTraits>;

struct BitmapTraits {
    using Handle = HBITMAP;
    static Handle none() { return nullptr; }
    static void close(Handle handle) { DeleteObject(handle); }
};
using Bitmap = base::UniqueHandle<BitmapTraits>;

/// Selects an object into a device context; restores the previous one on destruction.
class [[nodiscard]] Selection {
public:
    Selection(HDC context, HGDIOBJ object) : context_(context), previous_(SelectObject(context, object)) {}
    Selection(const Selection&) = delete;
    Selection& operator=(const Selection&) = delete;
    ~Selection() { SelectObject(context_, previous_); }

private:
    HDC context_;
    HGDIOBJ previous_;
};

} // namespace framework
