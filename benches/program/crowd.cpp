// 500 runs at once: whether each one is recorded and how fast the window responds.
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
constexpr double wantedAnswer = 0.1;
constexpr DWORD patienceMilliseconds = 300'000;

/// Measures the response time of a window repeatedly, on its own thread.
class AnswerWatch {
public:
    explicit AnswerWatch(HWND window) : thread_([this, window] { watch(window); }) {}

    /// Stops measuring. Returns each response time in seconds.
    std::vector<double> end() {
        ending_ = true;
        thread_.join();
        return answers_;
    }

private:
    void watch(HWND window) {
        while (!ending_) {
            const Moment sent = momentNow();
            SendMessageA(window, WM_NULL, 0, 0);
            answers_.push_back(secondsBetween(sent, momentNow()));
            Sleep(5);
        }
    }

    std::atomic<bool> ending_ = false;
    std::vector<double> answers_;
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

/// `emptyAnswers` are response times of an unrelated window: the delay that the load causes for any program.
void printAnswers(const char* when, const std::vector<double>& answers,
                  const std::vector<double>& emptyAnswers) {
    const double longest = std::ranges::max(answers);
    print({std::string("500 runs: longest answer while they ") + when,
           grouped(answers.size()) + " questions, 99 % within " + milliseconds(quantileOf(answers, 0.99)) +
               "; an empty program's longest " + milliseconds(std::ranges::max(emptyAnswers)) +
               ", 99 % within " + milliseconds(quantileOf(emptyAnswers, 0.99)),
           longest, 0, 0, "what a user takes for at once", wantedAnswer, longest / wantedAnswer, 1});
}

} // namespace

void benchCrowd() {
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

    AnswerWatch starting(program.window());
    AnswerWatch emptyWhileStarting(empty.window());
    for (int run = 0; run < runs; ++run)
        WaitForSingleObject(begun.get(), patienceMilliseconds);
    const std::vector<double> whileStarting = starting.end();
    const std::vector<double> emptyStarting = emptyWhileStarting.end();

    AnswerWatch ending(program.window());
    AnswerWatch emptyWhileEnding(empty.window());
    SetEvent(mayEnd.get());
    driver::waitUntil([] { return countRecorded() == runs; },
                      std::chrono::milliseconds(patienceMilliseconds));
    const std::vector<double> whileEnding = ending.end();
    const std::vector<double> emptyEnding = emptyWhileEnding.end();

    const std::size_t recorded = countRecorded();
    print({"500 runs side by side: recorded", std::to_string(runs) + " runs", static_cast<double>(recorded),
           0, 0, "all of them", runs, runs / std::max(1.0, static_cast<double>(recorded)), 1, ""});
    printAnswers("start", whileStarting, emptyStarting);
    printAnswers("end", whileEnding, emptyEnding);
}

} // namespace bench
