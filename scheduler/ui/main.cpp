#include "lib/base/opsys.h"
#include "scheduler/ui/startup.h"

#include <windows.h>

#include <cstdlib>
#include <exception>

/// Called for an exception that no one handles. It replaces the standard library's own function, which prints
/// the exception's name although this program has no output, and which makes the program 50 kB larger.
void __gnu_cxx::__verbose_terminate_handler() {
    std::abort();
}

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR commandLine, int showCommand) {
    base::startComponentLibrary();
    return scheduler::runProgram(commandLine, showCommand);
}
