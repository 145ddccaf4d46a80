// The child process of processes_test. usage: startedprocess EXITCODE | EVENTNAME
// With an event name, waits for the event and ends with code 5, or with 1 after a timeout.
#include "tests/support/timeout.h"

#include <windows.h>

#include <cstdlib>
#include <cstring>

int main() {
    const char* const argument = std::strstr(GetCommandLineA(), ".exe\" ") + 6;
    char* end = nullptr;
    const unsigned long code = std::strtoul(argument, &end, 10);
    if (end != argument)
        ExitProcess(code);
    const HANDLE event = OpenEventA(SYNCHRONIZE, FALSE, argument);
    return WaitForSingleObject(event, test::timeout) == WAIT_OBJECT_0 ? 5 : 1;
}
