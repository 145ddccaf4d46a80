#include "lib/base/opsys.h"
#include "scheduler/ui/startup.h"

#include <windows.h>

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR commandLine, int showCommand) {
    base::startComponentLibrary();
    return scheduler::runProgram(commandLine, showCommand);
}
