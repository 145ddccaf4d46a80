// The operating system: the program itself, its single instance, windows' texts and the component library.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string>

namespace base {

/// Makes the component library ready and has it closed at the program's exit. Called once, first.
void startComponentLibrary();

/// The program's module, fetched once.
HINSTANCE moduleHandle();

/// The full path of the program's executable file.
std::string executablePath();

/// Loads a library of the system, "name.dll", for as long as the program runs; null when there is none. One
/// of that name that lies beside the program is not taken for it, nor for what it needs itself.
HMODULE loadSystemLibrary(const std::string& name);

/// Makes the named mutex and holds it until the process ends. True when another instance has it already.
[[nodiscard]] bool createInstanceMutex(const std::string& name);

/// createInstanceMutex with the maker's and the program's names.
[[nodiscard]] bool isAnotherInstanceRunning();

/// A window's text; empty when it has none or memory cannot be had.
std::string windowText(HWND window);

/// The system's text for one of its error codes, in the user's language and without the line break at its
/// end.
std::string systemErrorText(std::uint32_t code);

} // namespace base
