#pragma once

#include "lib/base/dates.h"

#include <chrono>

namespace test {

class FakeClock : public base::Clock {
public:
    explicit FakeClock(base::TimeValue now = base::TimeValue()) : now_(now) {}

    base::TimeValue now() const override {
        ++reads;
        return now_;
    }
    std::chrono::milliseconds uptime() const override { return uptime_ += uptimeStep; }
    void set(base::TimeValue now) { now_ = now; }
    void advance(base::TimeSpan span) { now_ = now_ + span; }

    std::chrono::milliseconds uptimeStep{0}; ///< how much passes between two looks at the uptime
    mutable int reads = 0;                   ///< of the time

private:
    base::TimeValue now_;
    mutable std::chrono::milliseconds uptime_{0};
};

} // namespace test
