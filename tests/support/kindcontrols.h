// The kinds of schedules as their page shows them.
#pragma once

#include "scheduler/model/scheduledproject.h"

#include <array>
#include <vector>

namespace test {

inline constexpr std::array allKinds = {
    scheduler::ScheduleKind::AfterProject, scheduler::ScheduleKind::AtStartup,
    scheduler::ScheduleKind::Hourly,       scheduler::ScheduleKind::Daily,
    scheduler::ScheduleKind::Monthly,      scheduler::ScheduleKind::Once};

/// The controls that each kind shows and no other does, by the numbers of their template.
inline const std::array<std::vector<int>, allKinds.size()> controlsOfKinds = {{
    {1023, 1028, 1025},
    {1034, 1027, 1029},
    {1033, 1015, 1030},
    {1035, 1019, 1031, 1006, 1007, 1008, 1009, 1010, 1011, 1012},
    {1036, 1022, 1032, 1024},
    {1037, 1026},
}};

} // namespace test
