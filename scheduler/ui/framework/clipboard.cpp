#include "scheduler/ui/framework/clipboard.h"

#include "lib/base/handles.h"

namespace framework {
namespace {

struct GlobalMemoryTraits {
    using Handle = HGLOBAL;
    static Handle none() { return nullptr; }
    static void close(Handle handle) { GlobalFree(handle); }
};
using GlobalMemory = base::UniqueHandle<GlobalMemoryTraits>;

/// Unicode, because for CF_TEXT the clipboard assumes the code page of the keyboard layout.
GlobalMemory toUnicode(const std::string& text) {
    const int bytes = static_cast<int>(text.size()) + 1;
    const int length = MultiByteToWideChar(CP_ACP, 0, text.c_str(), bytes, nullptr, 0);
    GlobalMemory memory(GlobalAlloc(GMEM_MOVEABLE, static_cast<std::size_t>(length) * sizeof(wchar_t)));
    if (auto* const content = static_cast<wchar_t*>(GlobalLock(memory.get()))) {
        MultiByteToWideChar(CP_ACP, 0, text.c_str(), bytes, content, length);
        GlobalUnlock(memory.get());
    }
    return memory;
}

/// Retries, because other programs can hold the clipboard briefly.
bool openClipboard(HWND owner) {
    for (int attempt = 0; attempt < 5; ++attempt) {
        if (OpenClipboard(owner))
            return true;
        Sleep(20);
    }
    return false;
}

} // namespace

bool copyToClipboard(HWND owner, const std::string& text) {
    GlobalMemory memory = toUnicode(text);
    if (!memory || !openClipboard(owner))
        return false;
    const bool copied = EmptyClipboard() && SetClipboardData(CF_UNICODETEXT, memory.get());
    if (copied)
        static_cast<void>(memory.release()); // the clipboard owns it now
    CloseClipboard();
    return copied;
}

} // namespace framework
