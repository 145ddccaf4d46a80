// The operating system: the program itself, its single instance, windows' texts and the component library.
#pragma once

#include <windows.h>

#include <string>

namespace base {

/// Makes the component library ready and has it closed at the program's exit. Called once, first.
void startComponentLibrary();

/// The program's module, fetched once.
HINSTANCE moduleHandle();

/// The full path of the program's executable file.
std::string executablePath();

/// Makes the named mutex and holds it until the process ends. True when another instance has it already.
bool createInstanceMutex(const std::string& name);

/// createInstanceMutex with the maker's and the program's names.
bool isAnotherInstanceRunning();

/// A window's text; empty when it has none or memory cannot be had.
std::string windowText(HWND window);

} // namespace base
