#pragma once

#include "scheduler/run/engine.h"
#include "tests/support/eventlog.h"

namespace test {

class FakeEngineListener : public scheduler::EngineListener {
public:
    explicit FakeEngineListener(EventLog& log) : log_(log) {}

    void onSuspendedChanged(bool suspended) override {
        log_.push_back(suspended ? "show suspended" : "show resumed");
    }

private:
    EventLog& log_;
};

} // namespace test
