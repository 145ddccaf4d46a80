#include "tests/program/witnessdriver.h"

#include "tests/program/scheduledriver.h"

namespace driver {
namespace {

HMODULE witnessLibrary() {
    static const HMODULE library = LoadLibraryA((buildFolder() + "tests\\program\\witness.dll").c_str());
    return library;
}

HOOKPROC procedure(const char* name) {
    return reinterpret_cast<HOOKPROC>(reinterpret_cast<void*>(GetProcAddress(witnessLibrary(), name)));
}

} // namespace

WitnessDriver::WitnessDriver(HWND mainWindow)
    : mainWindow_(mainWindow),
      memory_(CreateFileMappingA(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, sizeof(witness::Notes),
                                 witness::memoryName)),
      notes_(static_cast<witness::Notes*>(
          MapViewOfFile(memory_.get(), FILE_MAP_WRITE, 0, 0, sizeof(witness::Notes)))) {
    *notes_ = {};
    const DWORD thread = GetWindowThreadProcessId(mainWindow, nullptr);
    struct Hook {
        int kind;
        const char* procedure;
    };
    for (const Hook& hook : {Hook{WH_CALLWNDPROC, "onSent"}, Hook{WH_GETMESSAGE, "onTaken"}})
        if (const HHOOK made =
                SetWindowsHookExA(hook.kind, procedure(hook.procedure), witnessLibrary(), thread))
            hooks_.push_back(made);
    // The library enters the process with the first message.
    SendMessageA(mainWindow, WM_NULL, 0, 0);
}

WitnessDriver::~WitnessDriver() {
    for (const HHOOK hook : hooks_)
        UnhookWindowsHookEx(hook);
    UnmapViewOfFile(notes_);
}

void WitnessDriver::perform(witness::Act act, HWND window) {
    SendMessageA(window, RegisterWindowMessageA(witness::actMessage), static_cast<WPARAM>(act), 0);
}

bool WitnessDriver::passTicks(LONG count) const {
    const LONG end = ticks() + count;
    return waitUntil([&] { return ticks() >= end; });
}

} // namespace driver
