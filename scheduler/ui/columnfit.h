#pragma once

#include <vector>

namespace scheduler {

/// Fits columns of the widths `needed` into `room`, all in pixels. Spare room is shared equally; if there is
/// too little, the widest columns shrink. The sum can be a few pixels less than `room`.
std::vector<int> fitColumns(std::vector<int> needed, int room);

} // namespace scheduler
