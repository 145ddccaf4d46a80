// 500 runs at the same time: how many are recorded and how fast the window responds.
#include "benches/program/marking.h"
#include "benches/program/processes.h"
#include "benches/program/programbenches.h"
#include "benches/table.h"
#include "lib/base/registry.h"
#include "tests/program/scheduledriver.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <string>
#include <thread>
#include <vector>

namespace bench {
namespace {

constexpr int runs = 500;
constexpr double wantedResponse = 0.1;
constexpr DWORD timeoutMilliseconds = 300'000;

/// Repeatedly measures a window's response time, in a separate thread.
class ResponseTimer {
public:
    explicit ResponseTimer(HWND window) : thread_([this, window] { watch(window); }) {}

    /// Stops measuring. Returns the response times in seconds.
    std::vector<double> end() {
        ending_ = true;
        thread_.join();
        return responses_;
    }

private:
    void watch(HWND window) {
        while (!ending_) {
            const Moment sent = momentNow();
            SendMessageA(window, WM_NULL, 0, 0);
            responses_.push_back(secondsBetween(sent, momentNow()));
            Sleep(5);
        }
    }

    std::atomic<bool> ending_ = false;
    std::vector<double> responses_;
    std::thread thread_;
};

std::size_t countRecorded() {
    return static_cast<std::size_t>(
        std::ranges::count_if(driver::savedSchedule(), [](const scheduler::ScheduledProject& entry) {
            return entry.lastRun != base::TimeValue() && entry.lastResult == entry.path && !entry.running;
        }));
}

std::string milliseconds(double seconds) {
    return std::to_string(static_cast<int>(seconds * 1000 + 1)) + " ms";
}

/// The empty program's response times show the delay that the load causes for any program.
void printResponses(const char* when, const std::vector<double>& responses,
                    const std::vector<double>& emptyResponses) {
    const double longest = std::ranges::max(responses);
    print({std::string("500 runs: slowest response while they ") + when,
           grouped(responses.size()) + " requests, 99 % within " + milliseconds(quantileOf(responses, 0.99)) +
               "; the empty program's slowest " + milliseconds(std::ranges::max(emptyResponses)) +
               ", 99 % within " + milliseconds(quantileOf(emptyResponses, 0.99)),
           longest, 0, 0, "a response that feels immediate", wantedResponse, longest / wantedResponse, 1});
}

} // namespace

void benchManyRuns() {
    clearPreferences();
    base::writeNumber(HKEY_CURRENT_USER, "Software\\Brindlewood\\scheduler\\State\\RunMultiple", 1);
    const base::KernelHandle begun(CreateSemaphoreA(nullptr, 0, runs, begunSemaphore));
    const base::KernelHandle mayEnd(CreateEventA(nullptr, TRUE, FALSE, endTogetherEvent));
    const MarkingSpider spider;
    std::vector<scheduler::ScheduledProject> entries;
    const base::TimeValue due = base::TimeValue::now() + base::TimeSpan::fromSeconds(8);
    for (int run = 0; run < runs; ++run)
        entries.push_back(spider.makeEntry(run, due));
    saveEntries(entries);
    WindowProcess program(schedulerCommand(), schedulerClass);
    program.waitUntilShown();
    WindowProcess empty(emptyProgramCommand(runs), emptyProgramClass);
    empty.waitUntilShown();

    ResponseTimer starting(program.window());
    ResponseTimer emptyWhileStarting(empty.window());
    for (int run = 0; run < runs; ++run)
        WaitForSingleObject(begun.get(), timeoutMilliseconds);
    const std::vector<double> whileStarting = starting.end();
    const std::vector<double> emptyStarting = emptyWhileStarting.end();

    ResponseTimer ending(program.window());
    ResponseTimer emptyWhileEnding(empty.window());
    SetEvent(mayEnd.get());
    driver::waitUntil([] { return countRecorded() == runs; }, std::chrono::milliseconds(timeoutMilliseconds));
    const std::vector<double> whileEnding = ending.end();
    const std::vector<double> emptyEnding = emptyWhileEnding.end();

    const std::size_t recorded = countRecorded();
    print({"500 runs at the same time: recorded", std::to_string(runs) + " runs",
           static_cast<double>(recorded), 0, 0, "all runs", runs,
           runs / std::max(1.0, static_cast<double>(recorded)), 1, ""});
    printResponses("start", whileStarting, emptyStarting);
    printResponses("end", whileEnding, emptyEnding);
}

} // namespace bench
