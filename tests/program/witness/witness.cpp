// A library that hooks put into the scheduler's process. From there it sees what no other process can ask
// for: what is painted and what menus say when they open. Unless it is told to, it changes nothing, so what
// is tested is the program as it is.

#include "lib/base/stackalignment.h"
#include "scheduler/run/worker.h"
#include "tests/program/witness/notes.h"
#include "tests/support/gdiobjects.h"
#include "tests/support/losttexts.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <shlobj.h>
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

void notePaint(HWND window) {
    if (window == notes()->painted)
        ++notes()->paints;
}

void noteMenu(HMENU menu) {
    auto& items = notes()->items;
    const int count = std::clamp(GetMenuItemCount(menu), 0, static_cast<int>(items.size()));
    for (int position = 0; position < count; ++position) {
        witness::MenuItem& item = items[static_cast<std::size_t>(position)];
        item = {};
        MENUITEMINFOA information{};
        information.cbSize = sizeof(information);
        information.fMask = MIIM_ID | MIIM_STATE | MIIM_STRING;
        information.dwTypeData = item.text.data();
        information.cch = static_cast<UINT>(item.text.size());
        GetMenuItemInfoA(menu, static_cast<UINT>(position), TRUE, &information);
        item.command = information.wID;
        item.state = information.fState;
    }
    notes()->itemCount = count;
    ++notes()->menus;
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

void dropFiles(HWND window) {
    DROPFILES head{};
    head.pFiles = sizeof(head);
    const auto& names = notes()->dropped;
    const HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, sizeof(head) + names.size());
    char* const content = static_cast<char*>(GlobalLock(block));
    std::memcpy(content, &head, sizeof(head));
    std::memcpy(content + sizeof(head), names.data(), names.size());
    GlobalUnlock(block);
    PostMessageA(window, WM_DROPFILES, reinterpret_cast<WPARAM>(block), 0);
}

} // namespace

// A painting is sent by UpdateWindow, or taken from the queue.
extern "C" __declspec(dllexport) CALLED_BY_PLATFORM LRESULT CALLBACK
    onSent(int code, WPARAM wParam, LPARAM lParam) {
    const auto& message = *reinterpret_cast<const CWPSTRUCT*>(lParam);
    if (code == HC_ACTION && notes() && message.message == WM_PAINT)
        notePaint(message.hwnd);
    if (code == HC_ACTION && notes() && message.message == WM_COMMAND && !GetParent(message.hwnd)) {
        notes()->lastCommand = LOWORD(message.wParam);
        ++notes()->commands;
    }
    static const UINT dropMessage = RegisterWindowMessageA(witness::dropMessage);
    if (code == HC_ACTION && notes() && message.message == dropMessage)
        dropFiles(message.hwnd);
    static const UINT countMessage = RegisterWindowMessageA(witness::countMessage);
    if (code == HC_ACTION && notes() && message.message == countMessage)
        countObjects();
    static const UINT settleMessage = RegisterWindowMessageA(witness::settleMessage);
    if (code == HC_ACTION && notes() && message.message == settleMessage)
        settleHeaps();
    static const UINT fillContextsMessage = RegisterWindowMessageA(witness::fillContextsMessage);
    if (code == HC_ACTION && message.message == fillContextsMessage)
        fillContexts();
    static const UINT drawMessage = RegisterWindowMessageA(witness::drawMessage);
    if (code == HC_ACTION && message.message == drawMessage)
        RedrawWindow(message.hwnd, nullptr, nullptr,
                     RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN | RDW_UPDATENOW);
    static const UINT freeTextsMessage = RegisterWindowMessageA(witness::freeTextsMessage);
    if (code == HC_ACTION && notes() && message.message == freeTextsMessage)
        notes()->freesTexts = test::textsLoseTheirBlock();
    if (code == HC_ACTION && notes() && notes()->freesTexts && test::freeBlockOfDyingText(message))
        ++notes()->freedTexts;
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

extern "C" __declspec(dllexport) CALLED_BY_PLATFORM LRESULT CALLBACK
    onTaken(int code, WPARAM wParam, LPARAM lParam) {
    const auto& message = *reinterpret_cast<const MSG*>(lParam);
    if (code == HC_ACTION && notes() && wParam == PM_REMOVE && message.message == WM_PAINT)
        notePaint(message.hwnd);
    if (code == HC_ACTION && notes() && wParam == PM_REMOVE && message.message == WM_TIMER && message.hwnd &&
        !GetParent(message.hwnd))
        ++notes()->ticks;
    if (code == HC_ACTION && notes() && wParam == PM_REMOVE &&
        message.message == scheduler::WM_RUN_FINISHED && message.hwnd && !GetParent(message.hwnd))
        ++notes()->endedRuns;
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

extern "C" __declspec(dllexport) CALLED_BY_PLATFORM LRESULT CALLBACK
    onHandled(int code, WPARAM wParam, LPARAM lParam) {
    const auto& message = *reinterpret_cast<const CWPRETSTRUCT*>(lParam);
    if (code == HC_ACTION && notes() && message.message == WM_INITMENUPOPUP)
        noteMenu(reinterpret_cast<HMENU>(message.wParam));
    return CallNextHookEx(nullptr, code, wParam, lParam);
}
