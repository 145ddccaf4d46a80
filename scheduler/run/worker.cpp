#include "scheduler/run/worker.h"

#include "lib/base/processes.h"
#include "lib/base/threads.h"
#include "scheduler/run/projectlaunch.h"
#include "scheduler/run/workingdirectory.h"

#include <new>
#include <utility>

namespace scheduler {

namespace {

constexpr DWORD retryMilliseconds = 100;

// All that a worker thread knows. It shares nothing with anyone.
struct Supervision {
    RunRequest request;
    HWND window;
};

void runToItsEnd(const std::string& commandLine) {
    // No time-out: the spider keeps to the entry's time limit by itself, and nothing here ends a process. Its
    // exit code says nothing either; a start that failed is a run that ended at once.
    base::runProcessAndWait(commandLine, SW_SHOWMINNOACTIVE, workingDirectoryOf(commandLine), INFINITE);
}

// The entry of a worker thread.
void supervise(void* argument) noexcept {
    const std::unique_ptr<const Supervision> run(static_cast<Supervision*>(argument));
    try {
        runToItsEnd(run->request.commandLine);
    } catch (...) {
        // Memory ran out before the process could be started: its end is reported like that of any failed
        // start.
    }
    // Posted, never sent: the worker must not wait for the user interface. A queue that is full takes it
    // later; without it the entry would run for ever.
    while (!PostMessageA(run->window, WM_RUN_FINISHED, run->request.runNumber, 0) && IsWindow(run->window))
        Sleep(retryMilliseconds);
}

} // namespace

std::string WorkerLauncher::commandLineOf(const ScheduledProject& entry) {
    return buildCommandLine(entry);
}

bool WorkerLauncher::launch(std::unique_ptr<RunRequest> request) {
    std::unique_ptr<Supervision> run(new (std::nothrow) Supervision{std::move(*request), window_});
    if (!run || base::startThread(supervise, run.get()) == base::threadFailed)
        return false;
    // The thread may be over by now: only the pointer itself is still ours to touch.
    static_cast<void>(run.release());
    return true;
}

} // namespace scheduler
