#pragma once

#include "scheduler/run/runlauncher.h"
#include "tests/support/eventlog.h"

#include <cstdint>
#include <exception>
#include <string>
#include <vector>

namespace test {

class FakeRunLauncher : public scheduler::RunLauncher {
public:
    struct Run {
        std::string path;
        std::int32_t number;
    };

    explicit FakeRunLauncher(EventLog& log) : log_(log) {}

    std::vector<Run> launched;
    bool threadsStart = true;
    std::exception_ptr failure; ///< if set, thrown by launch()

    bool launch(const scheduler::ScheduledProject& entry) override {
        log_.push_back("launch " + entry.path + " as run " + std::to_string(entry.runNumber));
        if (failure)
            std::rethrow_exception(failure);
        if (threadsStart)
            launched.push_back({entry.path, entry.runNumber});
        return threadsStart;
    }

private:
    EventLog& log_;
};

} // namespace test
