#include "scheduler/ui/columnfit.h"

#include <algorithm>
#include <cstddef>
#include <numeric>

namespace scheduler {

std::vector<int> fitColumns(std::vector<int> needed, int room) {
    room = std::max(0, room);
    for (int& width : needed)
        width = std::min(width, room);
    std::vector<std::size_t> narrowestFirst(needed.size());
    std::iota(narrowestFirst.begin(), narrowestFirst.end(), std::size_t{0});
    std::ranges::sort(narrowestFirst, {}, [&](std::size_t column) { return needed[column]; });

    int columns = static_cast<int>(needed.size());
    const int spare = std::max(0, room - std::accumulate(needed.begin(), needed.end(), 0));
    const int extra = columns == 0 ? 0 : spare / columns;
    for (const std::size_t column : narrowestFirst) {
        needed[column] = std::min(needed[column] + extra, room / columns);
        room -= needed[column];
        --columns;
    }
    return needed;
}

} // namespace scheduler
