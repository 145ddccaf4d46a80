// Returns outcomes that the test, not a spider, has put into `left`.
#pragma once

#include "scheduler/run/outcomesource.h"
#include "tests/support/eventlog.h"

#include <cstdint>
#include <exception>
#include <map>
#include <string>
#include <utility>

namespace test {

class FakeOutcomeSource : public scheduler::OutcomeSource {
public:
    explicit FakeOutcomeSource(EventLog& log) : log_(log) {}

    std::map<std::uint32_t, scheduler::RunOutcome> left;
    std::exception_ptr failure; ///< if set, thrown by take()

    scheduler::RunOutcome take(std::uint32_t runNumber) override {
        log_.push_back("take outcome " + std::to_string(runNumber));
        if (failure)
            std::rethrow_exception(failure);
        const auto found = left.find(runNumber);
        if (found == left.end())
            return {};
        scheduler::RunOutcome outcome = std::move(found->second);
        left.erase(found);
        return outcome;
    }

private:
    EventLog& log_;
};

} // namespace test
