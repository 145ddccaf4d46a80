#include "scheduler/model/deletion.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <ranges>

namespace scheduler {
namespace {

/// Every entry's afterIndex, whatever its kind, apart from the entries themselves: each deletion passes over
/// all of them.
std::vector<std::int32_t> referencesOf(const ScheduleList& list) {
    std::vector<std::int32_t> references;
    references.reserve(list.size());
    for (const ScheduledProject& entry : list)
        references.push_back(entry.afterIndex);
    return references;
}

void removeOne(std::vector<std::int32_t>& references, std::int32_t deleted) {
    const auto count = static_cast<std::int32_t>(references.size());
    // Where the deleted entry's predecessor will stand after the removal.
    std::int32_t predecessor = references[static_cast<std::size_t>(deleted)];
    if (deleted <= predecessor && predecessor != 0)
        --predecessor;
    for (std::int32_t& index : references) {
        const std::int32_t moved = std::min(index - (index > deleted), count);
        index = index == deleted ? predecessor : moved;
    }
    references.erase(references.begin() + deleted);
}

} // namespace

void deleteEntries(ScheduleList& list, std::vector<std::size_t> positions) {
    if (positions.empty())
        return;
    std::ranges::sort(positions, std::greater());
    std::vector<std::int32_t> references = referencesOf(list);
    // From the highest to the lowest, so that those still to be deleted are where they were.
    for (const std::size_t position : positions)
        removeOne(references, static_cast<std::int32_t>(position));

    list.removeAll(positions);
    // Whoever comes to follow itself goes on doing so while others are removed: looking at the end is enough.
    for (std::size_t position = 0; position < list.size(); ++position) {
        ScheduledProject& entry = list[position];
        entry.afterIndex = references[position];
        if (entry.kind == ScheduleKind::AfterProject &&
            entry.afterIndex == static_cast<std::int32_t>(position))
            entry.kind = ScheduleKind::AtStartup;
    }
}

} // namespace scheduler
