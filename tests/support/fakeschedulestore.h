#pragma once

#include "scheduler/model/schedulelist.h"
#include "scheduler/model/schedulestore.h"
#include "tests/support/eventlog.h"

#include <vector>

namespace test {

class FakeScheduleStore : public scheduler::ScheduleStore {
public:
    explicit FakeScheduleStore(EventLog* log = nullptr) : log_(log) {}

    std::vector<std::vector<scheduler::ScheduledProject>> saved; ///< one schedule per save

    void save(const scheduler::ScheduleList& list) override {
        saved.emplace_back(list.begin(), list.end());
        if (log_)
            log_->push_back("save");
    }

private:
    EventLog* log_;
};

} // namespace test
