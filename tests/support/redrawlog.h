#pragma once

#include "scheduler/model/schedulelist.h"
#include "tests/support/eventlog.h"

namespace test {

class RedrawLog : public scheduler::ScheduleObserver {
public:
    RedrawLog(scheduler::ScheduleList& schedule, EventLog& log) : schedule_(schedule), log_(log) {
        schedule_.addObserver(*this);
    }
    RedrawLog(const RedrawLog&) = delete;
    RedrawLog& operator=(const RedrawLog&) = delete;
    ~RedrawLog() override { schedule_.removeObserver(*this); }

private:
    void onScheduleChanged() override { log_.push_back("redraw"); }

    scheduler::ScheduleList& schedule_;
    EventLog& log_;
};

} // namespace test
