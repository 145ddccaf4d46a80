#include "tests/program/spydriver.h"

#include "tests/program/scheduledriver.h"

namespace driver {
namespace {

HMODULE spyLibrary() {
    static const HMODULE library = LoadLibraryA((buildFolder() + "tests\\program\\spy.dll").c_str());
    return library;
}

HOOKPROC procedure(const char* name) {
    return reinterpret_cast<HOOKPROC>(reinterpret_cast<void*>(GetProcAddress(spyLibrary(), name)));
}

} // namespace

SpyDriver::SpyDriver(HWND mainWindow)
    : mainWindow_(mainWindow),
      memory_(CreateFileMappingA(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, sizeof(spy::SharedState),
                                 spy::memoryName)),
      state_(static_cast<spy::SharedState*>(
          MapViewOfFile(memory_.get(), FILE_MAP_WRITE, 0, 0, sizeof(spy::SharedState)))) {
    *state_ = {};
    const DWORD thread = GetWindowThreadProcessId(mainWindow, nullptr);
    struct Hook {
        int kind;
        const char* procedure;
    };
    for (const Hook& hook : {Hook{WH_CALLWNDPROC, "onSent"}, Hook{WH_GETMESSAGE, "onRetrieved"}})
        if (const HHOOK made = SetWindowsHookExA(hook.kind, procedure(hook.procedure), spyLibrary(), thread))
            hooks_.push_back(made);
    // The first message loads the DLL into the process.
    SendMessageA(mainWindow, WM_NULL, 0, 0);
}

SpyDriver::~SpyDriver() {
    for (const HHOOK hook : hooks_)
        UnhookWindowsHookEx(hook);
    UnmapViewOfFile(state_);
}

void SpyDriver::perform(spy::Request request, HWND window) {
    SendMessageA(window, RegisterWindowMessageA(spy::requestMessage), static_cast<WPARAM>(request), 0);
}

bool SpyDriver::passTicks(LONG count) const {
    const LONG end = ticks() + count;
    return waitUntil([&] { return ticks() >= end; });
}

} // namespace driver
