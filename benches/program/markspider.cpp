// The spider of the benchmarks. Records when it starts and ends, and reports the project's path as the
// result.
#include "benches/program/marks.h"
#include "lib/base/handles.h"
#include "lib/base/registry.h"

#include <windows.h>

#include <string>

namespace {

bench::Moment processStart() {
    FILETIME created;
    FILETIME ended;
    FILETIME kernel;
    FILETIME user;
    GetProcessTimes(GetCurrentProcess(), &created, &ended, &kernel, &user);
    return static_cast<bench::Moment>(
        ULARGE_INTEGER{{created.dwLowDateTime, created.dwHighDateTime}}.QuadPart);
}

void waitForOtherRuns() {
    const base::KernelHandle begun(OpenSemaphoreA(SEMAPHORE_MODIFY_STATE, FALSE, bench::begunSemaphore));
    const base::KernelHandle end(OpenEventA(SYNCHRONIZE, FALSE, bench::endTogetherEvent));
    if (!begun || !end)
        return;
    ReleaseSemaphore(begun.get(), 1, nullptr);
    WaitForSingleObject(end.get(), INFINITE);
}

} // namespace

int main(int count, char** words) {
    std::string runNumber;
    std::string project;
    for (int i = 1; i < count; ++i) {
        const std::string word = words[i];
        if (word.starts_with("/s"))
            runNumber = word.substr(2);
        else if (!word.starts_with('/'))
            project = word;
    }
    if (runNumber.empty())
        return 1;
    waitForOtherRuns();
    const std::string key = "SOFTWARE\\Brindlewood\\Corvane Scheduler\\Schedule" + runNumber + '\\';
    base::writeString(HKEY_LOCAL_MACHINE, key + "Result", project);
    base::writeNumber(HKEY_LOCAL_MACHINE, key + "Error", 0);
    bench::writeMarks(project, {processStart(), bench::momentNow()});
    return 0;
}
