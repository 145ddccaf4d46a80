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

// Owned by the worker thread.
struct RunRequest {
    std::string commandLine;
    std::uint32_t runNumber;
    HWND window;
};

/// 0, or the error code of a failed start.
std::uint32_t runToCompletion(const std::string& commandLine) {
    std::uint32_t startError = ERROR_SUCCESS;
    // No time-out: the spider itself enforces the entry's time limit, and the scheduler never ends a process.
    // The exit code is ignored.
    base::runProcessAndWait(commandLine, SW_SHOWMINNOACTIVE, workingDirectoryOf(commandLine), INFINITE,
                            &startError);
    return startError;
}

/// Posts, because the worker must not wait for the user interface. Retries while the queue is full: without
/// the message, the entry would stay marked as running.
void report(const RunRequest& request, UINT message, std::uint32_t parameter) {
    while (!PostMessageA(request.window, message, request.runNumber, static_cast<LPARAM>(parameter)) &&
           IsWindow(request.window))
        Sleep(retryMilliseconds);
}

void supervise(void* argument) noexcept {
    const std::unique_ptr<const RunRequest> request(static_cast<RunRequest*>(argument));
    std::uint32_t startError = ERROR_SUCCESS;
    try {
        startError = runToCompletion(request->commandLine);
    } catch (...) {
        // No memory to start the process.
        startError = ERROR_NOT_ENOUGH_MEMORY;
    }
    // A failed start counts as a run that ended at once.
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
    // The thread owns the request now and may have freed it.
    static_cast<void>(request.release());
    return true;
}

} // namespace scheduler
