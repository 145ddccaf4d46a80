#pragma once

#include <vector>

namespace scheduler {

/// Divides `room` pixels among columns that need `needed` pixels each. Spare room is shared equally; if room
/// is short, the widest columns shrink. The widths add up to `room` or a few pixels less.
std::vector<int> fitColumns(std::vector<int> needed, int room);

} // namespace scheduler
