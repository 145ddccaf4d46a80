#include "lib/base/opsys.h"
#include "scheduler/ui/startup.h"

#include <windows.h>

#include <cstdlib>
#include <exception>

/// Called for an uncaught exception. The standard library's function, which this one replaces, adds 50 kB to
/// print the exception's name. This program has no console to print to.
void __gnu_cxx::__verbose_terminate_handler() {
    std::abort();
}

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR commandLine, int showCommand) {
    base::startComponentLibrary();
    return scheduler::runProgram(commandLine, showCommand);
}
