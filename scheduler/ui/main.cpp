#include "lib/base/opsys.h"
#include "scheduler/ui/startup.h"

#include <windows.h>

#include <cstdlib>
#include <exception>

/// Handles uncaught exceptions. Replaces the standard library's function, which adds 50 kB to print the
/// exception's name, although this program has no console.
void __gnu_cxx::__verbose_terminate_handler() {
    std::abort();
}

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR commandLine, int showCommand) {
    base::startComponentLibrary();
    return scheduler::runProgram(commandLine, showCommand);
}
