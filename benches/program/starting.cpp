// The time from the start of the process until its window is painted.
#include "benches/comparison.h"
#include "benches/entries.h"
#include "benches/program/processes.h"
#include "benches/program/programbenches.h"
#include "scheduler/model/schedulecodec.h"
#include "scheduler/model/schedulefile.h"

#include <string>

namespace bench {
namespace {

double secondsToShow(const std::string& command, const char* windowClass) {
    const auto begin = std::chrono::steady_clock::now();
    WindowProcess process(command, windowClass);
    process.waitUntilShown();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}

} // namespace

void benchStarting() {
    for (const std::size_t count : {0U, 1000U, 100000U}) {
        clearPreferences();
        scheduler::ScheduleList list;
        list.assign(manyEntries(count));
        saveForBench(list);
        const auto load = [] {
            scheduler::ScheduleList loaded;
            return secondsOf([&] { scheduler::loadSchedule(loaded, scheduler::scheduleMagic); });
        };
        const auto start = [] { return secondsToShow(schedulerCommand(), schedulerClass); };
        const std::string empty = emptyProgramCommand(count);
        compare({"start to window shown", count, "entries",
                 "an empty program with the same list; loading is subtracted", 1.2, load},
                start, [&] { return secondsToShow(empty, emptyProgramClass); });
        compare({"start to window shown", count, "entries", "the same with a notification icon", 1.2, load},
                start, [&] { return secondsToShow(empty + " icon", emptyProgramClass); });
    }
}

} // namespace bench
