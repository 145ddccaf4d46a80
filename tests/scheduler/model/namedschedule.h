// Schedules identified by a name.
#pragma once

#include "tests/support/encodedschedule.h"

#include <string>
#include <vector>

namespace test {

inline std::vector<scheduler::ScheduledProject> entriesOf(const std::string& name, std::size_t count) {
    scheduler::ScheduledProject entry;
    entry.path = "C:\\Sites\\" + name + ".kra";
    return std::vector(count, entry);
}

/// The file content for entriesOf(name, count).
inline std::string contentOf(const std::string& name, std::size_t count) {
    const auto content = encodedSchedule(entriesOf(name, count));
    return {reinterpret_cast<const char*>(content.data()), content.size()};
}

} // namespace test
