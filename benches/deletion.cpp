#include "scheduler/model/deletion.h"

#include "benches/benches.h"
#include "benches/comparison.h"
#include "benches/entries.h"

#include <cstdint>
#include <vector>

namespace bench {
namespace {

constexpr std::size_t count = 100000;
constexpr std::size_t deleted = 1000;

std::vector<std::size_t> spreadPositions() {
    std::vector<std::size_t> positions;
    for (std::size_t position = 0; position < count; position += count / deleted)
        positions.push_back(position);
    return positions;
}

/// One pass over the `afterIndex` values, the minimum work to delete an entry.
[[gnu::noinline]] void passOver(std::vector<std::int32_t>& references, std::int32_t position) {
    for (std::int32_t& reference : references)
        reference -= reference > position;
}

} // namespace

void benchDeletion() {
    const std::vector<scheduler::ScheduledProject> entries = manyEntries(count);
    const std::vector<std::size_t> positions = spreadPositions();
    const auto subject = [&] {
        scheduler::ScheduleList list;
        list.assign(entries);
        return secondsOf([&] { scheduler::deleteEntries(list, positions); });
    };
    const auto limit = [&] {
        std::vector<std::int32_t> references;
        for (const scheduler::ScheduledProject& entry : entries)
            references.push_back(entry.afterIndex);
        return secondsOf([&] {
            for (const std::size_t position : positions)
                passOver(references, static_cast<std::int32_t>(position));
            keep(references);
        });
    };
    compare({"delete 1,000 of 100,000", deleted, "entries", "one pass per deleted entry", 1.2}, subject,
            limit);
}

} // namespace bench
