// Notes each save.
#pragma once

#include "scheduler/model/schedulestore.h"
#include "tests/support/eventlog.h"

namespace test {

class LoggingStore : public scheduler::ScheduleStore {
public:
    explicit LoggingStore(EventLog& log) : log_(log) {}

    void save(const scheduler::ScheduleList&) override { log_.push_back("save"); }

private:
    EventLog& log_;
};

} // namespace test
