// Notes what a view would show.
#pragma once

#include "scheduler/run/engine.h"
#include "tests/support/eventlog.h"

#include <functional>

namespace test {

class FakeEngineListener : public scheduler::EngineListener {
public:
    explicit FakeEngineListener(EventLog& log) : log_(log) {}

    std::function<void()> onRedraw; ///< called during each redraw

    void onScheduleChanged() override {
        log_.push_back("redraw");
        if (onRedraw)
            onRedraw();
    }
    void onSuspendedChanged(bool suspended) override {
        log_.push_back(suspended ? "show suspended" : "show resumed");
    }

private:
    EventLog& log_;
};

} // namespace test
