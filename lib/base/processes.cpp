#include "lib/base/processes.h"

#include "lib/base/handles.h"
#include "lib/base/sourceregistration.h"

#include <windows.h>

namespace base {
namespace {

[[maybe_unused]] const bool registered = registerSourceFile(__FILE__, RELEASE_DATE);

static_assert(sizeof(STARTUPINFOA) == 68, "the 32-bit platform's record");

STARTUPINFOA startupInfoFor(int showCommand) {
    STARTUPINFOA info{};
    info.cb = sizeof info;
    info.dwFlags = STARTF_USESHOWWINDOW;
    info.wShowWindow = static_cast<WORD>(showCommand);
    return info;
}

/// Passes on the program's standard handles, if it has any. A hidden process gets only the input handle.
void passStandardHandles(STARTUPINFOA& info, int showCommand) {
    const HANDLE input = GetStdHandle(STD_INPUT_HANDLE);
    const HANDLE output = GetStdHandle(STD_OUTPUT_HANDLE);
    const HANDLE error = GetStdHandle(STD_ERROR_HANDLE);
    if (!input && !output && !error)
        return;
    info.dwFlags |= STARTF_USESTDHANDLES;
    info.hStdInput = input;
    if (showCommand != SW_HIDE) {
        info.hStdOutput = output;
        info.hStdError = error;
    }
}

} // namespace

bool createProcess(const std::string& commandLine, STARTUPINFOA& startupInfo,
                   PROCESS_INFORMATION& processInfo, const std::string& directory, bool inheritHandles) {
    std::string line = commandLine; // CreateProcessA may write to it
    return CreateProcessA(nullptr, line.data(), nullptr, nullptr, inheritHandles, 0, nullptr,
                          directory.empty() ? nullptr : directory.c_str(), &startupInfo, &processInfo) ||
           GetLastError() == ERROR_SUCCESS;
}

bool startProcess(const std::string& commandLine, int showCommand, const std::string& directory) {
    STARTUPINFOA startupInfo = startupInfoFor(showCommand);
    PROCESS_INFORMATION processInfo{};
    const bool started = createProcess(commandLine, startupInfo, processInfo, directory, false);
    const KernelHandle process(processInfo.hProcess);
    const KernelHandle thread(processInfo.hThread);
    return started;
}

std::uint32_t runProcessAndWait(const std::string& commandLine, int showCommand, const std::string& directory,
                                std::uint32_t timeoutMs, std::uint32_t* startError) {
    STARTUPINFOA startupInfo = startupInfoFor(showCommand);
    passStandardHandles(startupInfo, showCommand);
    PROCESS_INFORMATION processInfo{};
    const bool started = createProcess(commandLine, startupInfo, processInfo, directory, true);
    if (startError)
        *startError = started ? ERROR_SUCCESS : GetLastError();
    if (!started)
        return processFailed;
    KernelHandle process(processInfo.hProcess);
    KernelHandle thread(processInfo.hThread);
    if (WaitForSingleObject(process.get(), timeoutMs) == WAIT_FAILED) {
        // Not closed, on purpose: these handles may be invalid, and closing them could close other objects.
        static_cast<void>(process.release());
        static_cast<void>(thread.release());
        return processFailed;
    }
    DWORD exitCode = 0;
    GetExitCodeProcess(process.get(), &exitCode);
    return exitCode;
}

} // namespace base
