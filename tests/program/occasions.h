// Which occasions of a schedule the real program keeps, and when, held against plainly told rules.
#pragma once

#include "scheduler/model/scheduledproject.h"
#include "tests/support/plainrules.h"

#include <cstddef>
#include <string>
#include <vector>

namespace driver {

/// Watches the saved schedule of a running copy. Every run shows there with its start and the next occasion.
class Occasions {
public:
    /// Entries as they are given to a start between the seconds `before` and `after`. A run may be late by
    /// `lateness` seconds: the program looks at its schedule once a second, and its clock may run fast.
    Occasions(const std::vector<scheduler::ScheduledProject>& entries, plain::Second before,
              plain::Second after, plain::Second lateness);

    /// Looks at the schedule saved by now. What the rules do not allow becomes a failure of the test.
    void look(plain::Second now);

    /// Fails for each occasion that should have been kept by now.
    void expectNoneMissed(plain::Second now) const;

    /// Whether one should have been kept by now.
    bool isAnyOverdue(plain::Second now) const;

    plain::Second nextOf(std::size_t entry) const { return next_[entry]; }
    std::size_t runsOf(std::size_t entry) const { return runs_[entry]; }
    std::size_t runs() const;

private:
    void onRun(std::size_t entry, const scheduler::ScheduledProject& saved, plain::Second now);
    void wakeFollowers(std::size_t entry, const std::vector<scheduler::ScheduledProject>& saved,
                       plain::Second now);

    plain::Rules rules_;
    plain::Second lateness_;
    std::vector<plain::Item> items_;
    std::vector<plain::Second> next_;
    std::vector<plain::Second> lastRun_;
    std::vector<std::size_t> runs_;
};

} // namespace driver
