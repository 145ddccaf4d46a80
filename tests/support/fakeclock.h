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

    std::chrono::milliseconds uptimeStep{0}; ///< added at each call of uptime()
    mutable int reads = 0;                   ///< calls of now()

private:
    base::TimeValue now_;
    mutable std::chrono::milliseconds uptime_{0};
};

} // namespace test
