#pragma once

#include <windows.h>

#include <cstdint>
#include <string>

namespace base {

/// Initialises COM and uninitialises it when the program exits. Call once, before anything else.
void startComponentLibrary();

HINSTANCE moduleHandle();

std::string executablePath();

/// Loads the library `name` from the system's folder and never unloads it; null on failure. The library and
/// its dependencies are never loaded from the program's folder.
HMODULE loadSystemLibrary(const std::string& name);

/// Holds the mutex until the process ends. True if another instance already has it.
[[nodiscard]] bool createInstanceMutex(const std::string& name);

[[nodiscard]] bool isAnotherInstanceRunning();

/// Empty if the window has no text or memory runs out.
std::string windowText(HWND window);

/// In the user's language, without the line break at the end.
std::string systemErrorText(std::uint32_t code);

} // namespace base
