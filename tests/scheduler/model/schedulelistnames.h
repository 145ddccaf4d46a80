// Schedules told by the names of their entries, for the tests of the list.
#pragma once

#include "scheduler/model/schedulelist.h"

#include <gmock/gmock.h>

#include <cstddef>
#include <span>
#include <string>
#include <vector>

namespace test {

class MockObserver : public scheduler::ScheduleObserver {
public:
    MOCK_METHOD(void, onEntryInserted, (std::size_t position, bool becameLast), (override));
    MOCK_METHOD(void, onEntriesLoaded, (std::size_t count), (override));
    MOCK_METHOD(void, onEntriesRemoved, (std::span<const std::size_t> positions), (override));
    MOCK_METHOD(void, onCleared, (), (override));
    MOCK_METHOD(void, onScheduleChanged, (), (override));
};

inline scheduler::ScheduledProject named(const std::string& name) {
    scheduler::ScheduledProject entry;
    entry.path = name;
    return entry;
}

inline void fill(scheduler::ScheduleList& list, const std::vector<std::string>& names) {
    for (const std::string& name : names)
        list.append(named(name));
}

inline std::vector<std::string> namesIn(const scheduler::ScheduleList& list) {
    std::vector<std::string> names;
    for (const scheduler::ScheduledProject& entry : list)
        names.push_back(entry.path);
    return names;
}

} // namespace test
