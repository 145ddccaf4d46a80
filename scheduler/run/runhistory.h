// The history of the runs: a table as text, with one line for each finished run and each event of the
// program.
#pragma once

#include "scheduler/model/schedulelist.h"
#include "scheduler/run/runlistener.h"

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

namespace scheduler {

/// Where the lines of the history are kept.
class HistoryStore {
public:
    virtual ~HistoryStore() = default;

    /// A line that cannot be kept is lost, and nobody is told.
    virtual void append(const std::string& line) noexcept = 0;
};

/// The names of the columns, separated by tabs as the texts in each line are.
inline constexpr std::string_view historyHeader = "Start\tEnd\tSeconds\tProject\tCause\tOutcome\tPath";

enum class ProgramEvent { Started, Suspended, Resumed, NotRead, NotSaved, SessionEnd, Exited };

/// Composes the lines. A line for which there is no memory is lost. The history ends with the program: its
/// destructor notes the exit of a program whose start was noted.
class RunHistory : public RunListener {
public:
    /// `schedule` tells the names of followed entries. All three outlive the history.
    RunHistory(const ScheduleList& schedule, const base::Clock& clock, HistoryStore& store)
        : schedule_(schedule), clock_(clock), store_(store) {}
    RunHistory(const RunHistory&) = delete;
    RunHistory& operator=(const RunHistory&) = delete;
    ~RunHistory() override;

    void onRunStarted(const ScheduledProject& entry, bool manual) noexcept override;
    /// Told before the end of a run whose process could not be started.
    void onProcessNotStarted(std::uint32_t runNumber, std::string_view reason) noexcept;
    void onRunFinished(const FinishedRun& run) noexcept override;

    /// Adds a line with the path of the file that the event is about and why it happened, where that is
    /// known.
    void note(ProgramEvent event, const std::string& path = {}, const std::string& reason = {}) noexcept;

private:
    struct StartedRun {
        std::string cause;
        std::string startFailure; ///< why its process could not be started; empty when it was
    };

    const ScheduleList& schedule_;
    const base::Clock& clock_;
    HistoryStore& store_;
    std::map<std::uint32_t, StartedRun> runs_; ///< by run number, which later runs use again
    bool programStarted_ = false;
};

} // namespace scheduler
