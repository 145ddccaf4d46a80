// The delays from due time to process start and from process end to saved outcome.
#include "benches/program/marking.h"
#include "benches/program/marks.h"
#include "benches/program/processes.h"
#include "benches/program/programbenches.h"
#include "benches/table.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <vector>

namespace bench {
namespace {

using base::TimeSpan;
using base::TimeValue;

// From the creation of the entries to the first due time.
constexpr int secondsToStart = 4;
constexpr double wantedMedian = 0.6;
constexpr double wantedLongest = 1.1;

struct Latencies {
    std::vector<double> toStart;
    std::vector<double> toSave;
};

/// A Moment counts from 1601, a TimeValue from 11644473600 s later.
Moment momentOf(TimeValue t) {
    return (t.seconds() + Moment{11644473600}) * 10000000;
}

/// Waits until `phase` (0 to 1) of a clock second has passed. The program's timer then has about this phase.
void waitForPhase(double phase) {
    const auto sinceSecond = [] { return static_cast<double>(momentNow() % 10000000) * 1e-7; };
    while (sinceSecond() < phase || sinceSecond() > phase + 0.02)
        Sleep(1);
}

/// The times of the next `runs` saves of the schedule; fewer if they take too long.
std::vector<Moment> watchSaves(int runs) {
    std::vector<Moment> saves;
    const Moment from = savedAt();
    const Moment end = momentNow() + Moment{secondsToStart + runs + 30} * 10000000;
    for (Moment last = from; std::ssize(saves) < runs && momentNow() < end; Sleep(1))
        if (const Moment now = savedAt(); now != last) {
            last = now;
            // One save can change the file time more than once.
            if (!saves.empty() && secondsBetween(saves.back(), now) < 0.1)
                saves.back() = now;
            else
                saves.push_back(now);
        }
    Sleep(100);
    return saves;
}

void measureOneStart(double phase, int runs, Latencies& latencies) {
    const MarkingSpider spider;
    std::vector<scheduler::ScheduledProject> entries;
    waitForPhase(phase);
    const TimeValue firstDue = TimeValue::now() + TimeSpan::fromSeconds(secondsToStart);
    for (int run = 0; run < runs; ++run)
        entries.push_back(spider.makeEntry(run, firstDue + TimeSpan::fromSeconds(run)));
    saveEntries(entries);
    WindowProcess program(schedulerCommand(), schedulerClass);
    program.waitUntilShown();
    const std::vector<Moment> saves = watchSaves(runs);
    for (const scheduler::ScheduledProject& entry : entries) {
        const std::optional<Marks> marks = readMarks(entry.path);
        if (!marks)
            continue;
        latencies.toStart.push_back(secondsBetween(momentOf(entry.time), marks->started));
        // A file's time can be a few milliseconds earlier than the clock.
        const auto saved = std::ranges::lower_bound(saves, marks->ended - 100000);
        if (saved != saves.end())
            latencies.toSave.push_back(secondsBetween(marks->ended, *saved));
    }
}

void printRows(const std::string& what, const std::vector<double>& seconds, int wanted) {
    const std::string amount = std::to_string(seconds.size()) + " of " + std::to_string(wanted) + " runs";
    if (seconds.empty())
        return;
    const double median = medianOf(seconds);
    const double longest = std::ranges::max(seconds);
    print({what + ", median", amount, median, spreadOf(seconds), 0, "what one tick per second allows",
           wantedMedian, median / wantedMedian, 1});
    print({what + ", longest", amount, longest, 0, 0, "what one tick per second allows", wantedLongest,
           longest / wantedLongest, 1});
}

} // namespace

void benchLatency(int starts, int runsPerStart) {
    clearPreferences();
    Latencies latencies;
    for (int start = 0; start < starts; ++start)
        measureOneStart(static_cast<double>(start) / starts, runsPerStart, latencies);
    printRows("from due time to process start", latencies.toStart, starts * runsPerStart);
    printRows("from process end to saved outcome", latencies.toSave, starts * runsPerStart);
}

} // namespace bench
