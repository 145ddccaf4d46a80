// Platform functions that tests can replace with an Override. platformcalls.cpp redirects the imports.
#pragma once

#include "lib/base/dates.h"
#include "tests/support/importedfunctions.h"

#include <windows.h>

#include <commctrl.h>
#include <prsht.h>
#include <shellapi.h>
#include <shlwapi.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

#define SCHEDULER_WATCHED_CALLS(CALL)                                                                        \
    CALL(advapi32, RegCreateKeyExA, 36)                                                                      \
    CALL(advapi32, RegOpenKeyExA, 20)                                                                        \
    CALL(advapi32, RegQueryValueExA, 24)                                                                     \
    CALL(advapi32, RegSetValueExA, 24)                                                                       \
    CALL(comctl32, PropertySheetA, 4)                                                                        \
    CALL(gdi32, BitBlt, 36)                                                                                  \
    CALL(gdi32, CreateCompatibleBitmap, 12)                                                                  \
    CALL(gdi32, CreateCompatibleDC, 4)                                                                       \
    CALL(gdi32, CreateFontIndirectA, 4)                                                                      \
    CALL(gdi32, CreateRoundRectRgn, 24)                                                                      \
    CALL(kernel32, CreateFileA, 28)                                                                          \
    CALL(kernel32, CreateMutexA, 12)                                                                         \
    CALL(kernel32, GetFileAttributesA, 4)                                                                    \
    CALL(kernel32, GetSystemDirectoryA, 8)                                                                   \
    CALL(kernel32, GetWindowsDirectoryA, 8)                                                                  \
    CALL(kernel32, QueryPerformanceCounter, 4)                                                               \
    CALL(ole32, CoInitialize, 4)                                                                             \
    CALL(shell32, DragAcceptFiles, 8)                                                                        \
    CALL(shell32, DragFinish, 4)                                                                             \
    CALL(shell32, ShellExecuteA, 24)                                                                         \
    CALL(shell32, Shell_NotifyIconA, 8)                                                                      \
    CALL(shlwapi, SHDeleteKeyA, 8)                                                                           \
    CALL(user32, CreateDialogParamA, 20)                                                                     \
    CALL(user32, CreateWindowExA, 48)                                                                        \
    CALL(user32, FillRect, 12)                                                                               \
    CALL(user32, FindWindowA, 8)                                                                             \
    CALL(user32, GetCursorPos, 4)                                                                            \
    CALL(user32, GetForegroundWindow, 0)                                                                     \
    CALL(user32, GetMessageA, 16)                                                                            \
    CALL(user32, GetMonitorInfoA, 8)                                                                         \
    CALL(user32, KillTimer, 8)                                                                               \
    CALL(user32, LoadAcceleratorsA, 8)                                                                       \
    CALL(user32, LoadImageA, 24)                                                                             \
    CALL(user32, LoadMenuA, 8)                                                                               \
    CALL(user32, MessageBoxA, 16)                                                                            \
    CALL(user32, PostQuitMessage, 4)                                                                         \
    CALL(user32, RegisterClassExA, 4)                                                                        \
    CALL(user32, RegisterWindowMessageA, 4)                                                                  \
    CALL(user32, SetForegroundWindow, 4)                                                                     \
    CALL(user32, SetTimer, 16)                                                                               \
    CALL(user32, SetWindowsHookExA, 16)                                                                      \
    CALL(user32, ShowWindow, 8)                                                                              \
    CALL(user32, TrackPopupMenu, 28)                                                                         \
    CALL(user32, WinHelpA, 16)

namespace test {

template<class Name, class Function>
class PlatformCall;

template<class Name, class Result, class... Arguments>
class PlatformCall<Name, Result(WINAPI*)(Arguments...)> {
public:
    using Replacement = std::function<Result(Arguments...)>;
    static constexpr const char* name = Name::function;

    static Result original(Arguments... arguments) {
        static const auto function =
            platformFunction<Result(WINAPI*)(Arguments...)>(Name::library, Name::function);
        return function(arguments...);
    }
    static Result WINAPI make(Arguments... arguments) {
        return replacement ? replacement(arguments...) : original(arguments...);
    }

    static inline Replacement replacement;
};

#define SCHEDULER_WATCHED_CALL(library_, function_, bytes)                                                   \
    struct function_##Name {                                                                                 \
        static constexpr const char* library = #library_ ".dll";                                             \
        static constexpr const char* function = #function_;                                                  \
    };                                                                                                       \
    using function_##Call = PlatformCall<function_##Name, decltype(&::function_)>;
SCHEDULER_WATCHED_CALLS(SCHEDULER_WATCHED_CALL)
#undef SCHEDULER_WATCHED_CALL

/// Replaces a platform call until destroyed.
template<class Call>
class Override {
public:
    explicit Override(typename Call::Replacement call) { Call::replacement = std::move(call); }
    Override(const Override&) = delete;
    Override& operator=(const Override&) = delete;
    ~Override() { Call::replacement = nullptr; }
};

/// If set, called instead of starting a thread. Returning false simulates a failure.
inline std::function<bool()> startThread;

/// If set, replaces the program's clock.
inline std::function<base::TimeValue()> currentTime;

/// Records and answers message boxes instead of showing them.
class MessageBoxes {
public:
    struct Box {
        HWND owner = nullptr;
        std::string text;
        std::string caption;
        UINT flags = 0;
    };

    std::vector<Box> shown;
    std::function<int(const Box&)> answer = [](const Box&) { return IDOK; };

private:
    Override<MessageBoxACall> boxes_{[this](HWND owner, LPCSTR text, LPCSTR caption, UINT flags) {
        shown.push_back({owner, text, caption, flags});
        return answer(Box(shown.back()));
    }};
};

} // namespace test
