#include "tools/schedule/table.h"

#include "scheduler/model/descriptions.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <vector>

namespace {

using Row = std::array<std::string, 5>;

Row rowOf(const scheduler::ScheduledProject& entry, const scheduler::ScheduleList& list,
          base::TimeValue now) {
    return {scheduler::displayName(entry), scheduler::describeSchedule(entry, list),
            scheduler::describeLastRun(entry, now), entry.lastResult,
            scheduler::describeNextRun(entry, list, scheduler::EngineState(), base::systemClock())};
}

std::vector<Row> rowsOf(const scheduler::ScheduleList& list, base::TimeValue now) {
    std::vector<Row> rows = {{"Project", "When", "Last Run", "Last Result", "Next Run"}};
    for (const scheduler::ScheduledProject& entry : list)
        rows.push_back(rowOf(entry, list, now));
    return rows;
}

std::array<std::size_t, 5> widthsOf(const std::vector<Row>& rows) {
    std::array<std::size_t, 5> widths{};
    for (const Row& row : rows)
        for (std::size_t column = 0; column < row.size(); ++column)
            widths[column] = std::max(widths[column], row[column].size());
    return widths;
}

} // namespace

std::string scheduleTable(const scheduler::ScheduleList& list, base::TimeValue now) {
    const std::vector<Row> rows = rowsOf(list, now);
    const auto widths = widthsOf(rows);
    std::string text;
    for (const Row& row : rows) {
        std::string line;
        for (std::size_t column = 0; column < row.size(); ++column) {
            line += row[column];
            line.append(widths[column] - row[column].size() + 2, ' ');
        }
        line.erase(line.find_last_not_of(' ') + 1);
        text += line + '\n';
    }
    return text;
}
