#pragma once

#include "scheduler/run/runlistener.h"
#include "tests/support/eventlog.h"

#include <array>
#include <string>

namespace test {

class FakeRunListener : public scheduler::RunListener {
public:
    EventLog* log = nullptr;

    void onRunStarted(const scheduler::ScheduledProject& entry, bool manual) noexcept override {
        if (log)
            log->push_back((manual ? "started by hand: " : "started: ") + nameOf(entry));
    }
    void onRunFinished(const scheduler::FinishedRun& run) noexcept override {
        constexpr std::array ends = {"ended: ", "gave up: ", "system error: "};
        if (log)
            log->push_back(ends.at(static_cast<std::size_t>(run.how)) + nameOf(run.entry) + " after " +
                           std::to_string(secondsBetween(run.end, run.entry.lastRun)) + " s with error " +
                           std::to_string(run.errorCode));
    }

private:
    static std::string nameOf(const scheduler::ScheduledProject& entry) {
        return entry.path + " as run " + std::to_string(entry.runNumber);
    }
};

} // namespace test
