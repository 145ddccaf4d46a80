#include "scheduler/run/worker.h"

#include "lib/base/processes.h"
#include "lib/base/threads.h"
#include "scheduler/run/projectlaunch.h"
#include "scheduler/run/workingdirectory.h"

#include <cstdint>
#include <memory>
#include <string>

namespace scheduler {

namespace {

constexpr DWORD retryMilliseconds = 100;

// All that a worker thread knows. The thread owns it and shares nothing with others.
struct RunRequest {
    std::string commandLine;
    std::uint32_t runNumber;
    HWND window; ///< told of the end
};

/// 0, or why the process could not be started.
std::uint32_t runToItsEnd(const std::string& commandLine) {
    std::uint32_t startError = ERROR_SUCCESS;
    // No time-out: the spider keeps to the entry's time limit by itself, and nothing here ends a process. Its
    // exit code says nothing either.
    base::runProcessAndWait(commandLine, SW_SHOWMINNOACTIVE, workingDirectoryOf(commandLine), INFINITE,
                            &startError);
    return startError;
}

/// Posted, never sent: the worker must not wait for the user interface. A queue that is full takes it later;
/// without the end of its run the entry would run for ever.
void report(const RunRequest& request, UINT message, std::uint32_t parameter) {
    while (!PostMessageA(request.window, message, request.runNumber, static_cast<LPARAM>(parameter)) &&
           IsWindow(request.window))
        Sleep(retryMilliseconds);
}

// The entry of a worker thread.
void supervise(void* argument) noexcept {
    const std::unique_ptr<const RunRequest> request(static_cast<RunRequest*>(argument));
    std::uint32_t startError = ERROR_SUCCESS;
    try {
        startError = runToItsEnd(request->commandLine);
    } catch (...) {
        // Memory ran out before the process could be started.
        startError = ERROR_NOT_ENOUGH_MEMORY;
    }
    // A start that failed is a run that ended at once.
    if (startError != ERROR_SUCCESS)
        report(*request, WM_RUN_NOT_STARTED, startError);
    report(*request, WM_RUN_FINISHED, 0);
}

} // namespace

bool WorkerLauncher::launch(const ScheduledProject& entry) {
    auto request = std::make_unique<RunRequest>(
        RunRequest{buildCommandLine(entry), static_cast<std::uint32_t>(entry.runNumber), window_});
    if (base::startThread(supervise, request.get()) == base::threadFailed)
        return false;
    // The thread owns the request now, and may have freed it.
    static_cast<void>(request.release());
    return true;
}

} // namespace scheduler
