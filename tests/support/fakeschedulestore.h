// Keeps each saved schedule instead of writing it.
#pragma once

#include "scheduler/model/schedulelist.h"
#include "scheduler/model/schedulestore.h"

#include <vector>

namespace test {

class FakeScheduleStore : public scheduler::ScheduleStore {
public:
    std::vector<std::vector<scheduler::ScheduledProject>> saved; ///< what each save was given

    void save(const scheduler::ScheduleList& list) override { saved.emplace_back(list.begin(), list.end()); }
};

} // namespace test
