// A DLL with hooks. Windows loads the DLL into the scheduler's process, where the hooks inspect the process.

#include "lib/base/stackalignment.h"
#include "tests/program/spy/sharedstate.h"
#include "tests/support/gdiobjects.h"
#include "tests/support/leakedtexts.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <span>
#include <utility>

namespace {

spy::SharedState* openState() {
    const HANDLE memory = OpenFileMappingA(FILE_MAP_WRITE, FALSE, spy::memoryName);
    return memory ? static_cast<spy::SharedState*>(
                        MapViewOfFile(memory, FILE_MAP_WRITE, 0, 0, sizeof(spy::SharedState)))
                  : nullptr;
}

spy::SharedState* state() {
    static spy::SharedState* const shared = openState();
    return shared;
}

/// The number of windows and menus. If the platform does not count them, tries every possible handle.
DWORD userObjectCount() {
    if (const DWORD count = GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS))
        return count;
    DWORD count = 0;
    for (std::uintptr_t number = 2; number < 0x10000; number += 2) {
        DWORD process = 0;
        GetWindowThreadProcessId(reinterpret_cast<HWND>(number), &process);
        count += process == GetCurrentProcessId();
        count += IsMenu(reinterpret_cast<HMENU>(number)) ? 1U : 0U;
    }
    return count;
}

void countObjects() {
    state()->userObjects = userObjectCount();
    state()->gdiObjects = test::gdiObjectCount();
}

void settleHeaps() {
    constexpr std::size_t largest = 1536;
    constexpr int times = 2100; // Wine's heaps cache blocks of a size from the 2,050th block on
    std::array<HANDLE, 16> heaps{};
    const DWORD count = std::min<DWORD>(GetProcessHeaps(static_cast<DWORD>(heaps.size()), heaps.data()),
                                        static_cast<DWORD>(heaps.size()));
    for (const HANDLE heap : std::span(heaps).first(count))
        for (std::size_t size = 8; size <= largest; size += 8)
            for (int time = 0; time < times; ++time)
                HeapFree(heap, 0, HeapAlloc(heap, 0, size));
}

/// Uses more contexts at once than the cache holds, so that none keeps its last bitmap.
void fillContexts() {
    std::array<std::pair<HWND, HDC>, 80> windows{};
    for (auto& [window, context] : windows) {
        window = CreateWindowExA(0, "Static", "", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
        context = GetDC(window);
    }
    for (const auto& [window, context] : windows) {
        ReleaseDC(window, context);
        DestroyWindow(window);
    }
}

void perform(spy::Request request, HWND window) {
    switch (request) {
    case spy::Request::Count:
        return countObjects();
    case spy::Request::SettleHeaps:
        return settleHeaps();
    case spy::Request::FreeTexts:
        state()->freesLeakedBlocks = test::textControlsLeak();
        return;
    case spy::Request::FillContexts:
        return fillContexts();
    case spy::Request::Draw:
        RedrawWindow(window, nullptr, nullptr,
                     RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN | RDW_UPDATENOW);
    }
}

} // namespace

extern "C" __declspec(dllexport) CALLED_BY_PLATFORM LRESULT CALLBACK
    onSent(int code, WPARAM wParam, LPARAM lParam) {
    const auto& message = *reinterpret_cast<const CWPSTRUCT*>(lParam);
    static const UINT requestMessage = RegisterWindowMessageA(spy::requestMessage);
    if (code == HC_ACTION && state()) {
        if (message.message == requestMessage)
            perform(spy::Request{message.wParam}, message.hwnd);
        if (state()->freesLeakedBlocks && test::freeLeakedBlock(message))
            ++state()->freedTexts;
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

extern "C" __declspec(dllexport) CALLED_BY_PLATFORM LRESULT CALLBACK
    onRetrieved(int code, WPARAM wParam, LPARAM lParam) {
    const auto& message = *reinterpret_cast<const MSG*>(lParam);
    if (code == HC_ACTION && state() && wParam == PM_REMOVE && message.message == WM_TIMER && message.hwnd &&
        !GetParent(message.hwnd))
        ++state()->ticks;
    return CallNextHookEx(nullptr, code, wParam, lParam);
}
