// A library that hooks load into the scheduler's process, where it sees what no other process can ask for.

#include "lib/base/stackalignment.h"
#include "tests/program/witness/notes.h"
#include "tests/support/gdiobjects.h"
#include "tests/support/losttexts.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <span>
#include <utility>

namespace {

witness::Notes* openNotes() {
    const HANDLE memory = OpenFileMappingA(FILE_MAP_WRITE, FALSE, witness::memoryName);
    return memory ? static_cast<witness::Notes*>(
                        MapViewOfFile(memory, FILE_MAP_WRITE, 0, 0, sizeof(witness::Notes)))
                  : nullptr;
}

witness::Notes* notes() {
    static witness::Notes* const shared = openNotes();
    return shared;
}

/// Windows and menus: tries every number that one can have where the platform counts none.
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
    notes()->userObjects = userObjectCount();
    notes()->gdiObjects = test::gdiObjectCount();
}

/// Asks each heap of the process for blocks of every smaller size, thousands of times, one at a time.
void settleHeaps() {
    constexpr std::size_t largest = 1536;
    constexpr int times = 2100; // Wine's heaps begin to set room aside with the 2,050th
    std::array<HANDLE, 16> heaps{};
    const DWORD count = std::min<DWORD>(GetProcessHeaps(static_cast<DWORD>(heaps.size()), heaps.data()),
                                        static_cast<DWORD>(heaps.size()));
    for (const HANDLE heap : std::span(heaps).first(count))
        for (std::size_t size = 8; size <= largest; size += 8)
            for (int time = 0; time < times; ++time)
                HeapFree(heap, 0, HeapAlloc(heap, 0, size));
}

/// With contexts that draw on nothing: all are in use at once, so that none keeps what it drew on before.
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

void perform(witness::Act act, HWND window) {
    switch (act) {
    case witness::Act::Count:
        return countObjects();
    case witness::Act::SettleHeaps:
        return settleHeaps();
    case witness::Act::FreeTexts:
        notes()->freesTexts = test::textsLoseTheirBlock();
        return;
    case witness::Act::FillContexts:
        return fillContexts();
    case witness::Act::Draw:
        RedrawWindow(window, nullptr, nullptr,
                     RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN | RDW_UPDATENOW);
    }
}

} // namespace

extern "C" __declspec(dllexport) CALLED_BY_PLATFORM LRESULT CALLBACK
    onSent(int code, WPARAM wParam, LPARAM lParam) {
    const auto& message = *reinterpret_cast<const CWPSTRUCT*>(lParam);
    static const UINT actMessage = RegisterWindowMessageA(witness::actMessage);
    if (code == HC_ACTION && notes()) {
        if (message.message == actMessage)
            perform(witness::Act{message.wParam}, message.hwnd);
        if (notes()->freesTexts && test::freeBlockOfDyingText(message))
            ++notes()->freedTexts;
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

extern "C" __declspec(dllexport) CALLED_BY_PLATFORM LRESULT CALLBACK
    onTaken(int code, WPARAM wParam, LPARAM lParam) {
    const auto& message = *reinterpret_cast<const MSG*>(lParam);
    if (code == HC_ACTION && notes() && wParam == PM_REMOVE && message.message == WM_TIMER && message.hwnd &&
        !GetParent(message.hwnd))
        ++notes()->ticks;
    return CallNextHookEx(nullptr, code, wParam, lParam);
}
