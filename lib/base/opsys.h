#pragma once

#include <windows.h>

#include <cstdint>
#include <string>

namespace base {

/// Initialises COM until the program exits. Call once, first.
void startComponentLibrary();

HINSTANCE moduleHandle();

std::string executablePath();

/// Loads "name.dll" from the system's folder until the program ends; null if there is none. Never loads it,
/// or a library that it needs, from the program's folder.
HMODULE loadSystemLibrary(const std::string& name);

/// Holds the mutex until the process ends. True if another instance already has it.
[[nodiscard]] bool createInstanceMutex(const std::string& name);

[[nodiscard]] bool isAnotherInstanceRunning();

/// Empty if there is none or memory runs out.
std::string windowText(HWND window);

/// In the user's language, without the line break at the end.
std::string systemErrorText(std::uint32_t code);

} // namespace base
