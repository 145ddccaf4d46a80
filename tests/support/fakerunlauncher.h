// Starts no process: keeps what it was asked to start.
#pragma once

#include "scheduler/model/scheduledproject.h"
#include "scheduler/run/runlauncher.h"
#include "tests/support/eventlog.h"

#include <exception>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace test {

class FakeRunLauncher : public scheduler::RunLauncher {
public:
    explicit FakeRunLauncher(EventLog& log) : log_(log) {}

    std::vector<scheduler::RunRequest> launched;
    bool threadsStart = true;
    std::exception_ptr commandLineFailure; ///< thrown instead of making a command line, when there is one
    std::function<void()> onLaunch;        ///< called during each launch, for what others do meanwhile

    std::string commandLineOf(const scheduler::ScheduledProject& entry) override {
        if (commandLineFailure)
            std::rethrow_exception(commandLineFailure);
        log_.push_back("command line of " + entry.path);
        return entry.path + " as run " + std::to_string(entry.runNumber);
    }

    bool launch(std::unique_ptr<scheduler::RunRequest> request) override {
        log_.push_back("launch " + std::to_string(request->runNumber));
        if (onLaunch)
            onLaunch();
        if (threadsStart)
            launched.push_back(std::move(*request));
        return threadsStart;
    }

private:
    EventLog& log_;
};

} // namespace test
