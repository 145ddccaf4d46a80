// A clock that moves when told.
#pragma once

#include "lib/base/dates.h"

namespace test {

class FakeClock : public base::Clock {
public:
    explicit FakeClock(base::TimeValue now = base::TimeValue()) : now_(now) {}

    base::TimeValue now() const override { return now_; }
    void set(base::TimeValue now) { now_ = now; }
    void advance(base::TimeSpan span) { now_ = now_ + span; }

private:
    base::TimeValue now_;
};

} // namespace test
