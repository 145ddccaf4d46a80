#include "benches/benches.h"
#include "benches/comparison.h"
#include "benches/entries.h"
#include "benches/plaintexts.h"
#include "scheduler/ui/schedulerows.h"

#include <string>

namespace bench {

void benchCellTexts() {
    using scheduler::ScheduleColumn;
    constexpr std::size_t entryCount = 1000;
    constexpr std::size_t cells = 100000;
    scheduler::ScheduleList list;
    list.assign(manyEntries(entryCount));
    const scheduler::ScheduleRows rows(
        list, [] { return scheduler::EngineState(); }, base::systemClock());
    for (std::size_t i = 0; i < scheduler::columnCount; ++i) {
        const auto column = static_cast<ScheduleColumn>(i);
        const auto subject = [&] {
            return secondsOf([&] {
                for (std::size_t cell = 0; cell < cells; ++cell)
                    keep(rows.text(cell % entryCount, column));
            });
        };
        const auto limit = [&] {
            return secondsOf([&] {
                for (std::size_t cell = 0; cell < cells; ++cell)
                    keep(plainText(list, cell % entryCount, column));
            });
        };
        compare({std::string("cell text: ") + scheduler::columnHeaders[i], cells, "cells",
                 "its locale and runtime calls", 1.3},
                subject, limit);
    }
}

} // namespace bench
