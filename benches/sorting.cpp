#include "benches/benches.h"
#include "benches/comparison.h"
#include "benches/entries.h"
#include "scheduler/ui/schedulerows.h"

#include <algorithm>
#include <string>
#include <vector>

namespace bench {
namespace {

std::vector<std::string> textsOf(const scheduler::ScheduleRows& rows, scheduler::ScheduleColumn column) {
    std::vector<std::string> texts;
    texts.reserve(rows.size());
    for (std::size_t row = 0; row < rows.size(); ++row)
        texts.push_back(rows.text(row, column));
    return texts;
}

} // namespace

void benchSorting() {
    using scheduler::ScheduleColumn;
    constexpr std::size_t count = 100000;
    scheduler::ScheduleList list;
    list.assign(manyEntries(count));
    const auto state = [] { return scheduler::EngineState(); };
    for (std::size_t i = 0; i < scheduler::columnCount; ++i) {
        const auto column = static_cast<ScheduleColumn>(i);
        const std::vector<std::string> texts =
            textsOf(scheduler::ScheduleRows(list, state, base::systemClock()), column);
        // New rows each time, because they start in the schedule's order.
        const auto subject = [&] {
            scheduler::ScheduleRows rows(list, state, base::systemClock());
            return secondsOf([&] { rows.sortBy(column); });
        };
        const auto limit = [&] {
            std::vector<std::string> ready = texts;
            return secondsOf([&] { std::sort(ready.begin(), ready.end()); });
        };
        const auto allowance = [&] {
            const scheduler::ScheduleRows rows(list, state, base::systemClock());
            return secondsOf([&] { keep(textsOf(rows, column)); });
        };
        compare({std::string("sort by ") + scheduler::columnHeaders[i], count, "rows",
                 "std::sort of the texts; creating them is subtracted", 1.5, allowance},
                subject, limit);
    }
}

} // namespace bench
