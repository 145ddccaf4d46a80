#pragma once

#include "scheduler/model/schedulelist.h"
#include "scheduler/run/runlistener.h"

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

namespace scheduler {

class HistoryStore {
public:
    virtual ~HistoryStore() = default;

    /// A line that cannot be stored is lost silently.
    virtual void append(const std::string& line) noexcept = 0;
};

/// The column names. Tabs separate the columns here and in each line.
inline constexpr std::string_view historyHeader = "Start\tEnd\tSeconds\tProject\tCause\tOutcome\tPath";

enum class ProgramEvent { Started, Suspended, Resumed, NotRead, NotSaved, SessionEnd, Exited };

/// Writes a line for each finished run and each program event. If memory runs out, the line is lost. The
/// destructor records ProgramEvent::Exited if Started was recorded.
class RunHistory : public RunListener {
public:
    /// `schedule` provides the names of followed entries. All arguments must outlive this object.
    RunHistory(const ScheduleList& schedule, const base::Clock& clock, HistoryStore& store)
        : schedule_(schedule), clock_(clock), store_(store) {}
    RunHistory(const RunHistory&) = delete;
    RunHistory& operator=(const RunHistory&) = delete;
    ~RunHistory() override;

    void onRunStarted(const ScheduledProject& entry, bool manual) noexcept override;
    /// Call before onRunFinished.
    void onProcessNotStarted(std::uint32_t runNumber, std::string_view reason) noexcept;
    void onRunFinished(const FinishedRun& run) noexcept override;

    /// Adds a line; `path` is the file concerned, `reason` the cause of a failure.
    void record(ProgramEvent event, const std::string& path = {}, const std::string& reason = {}) noexcept;

private:
    struct StartedRun {
        std::string cause;
        std::string startFailure; ///< why its process could not be started; empty if it started
    };

    const ScheduleList& schedule_;
    const base::Clock& clock_;
    HistoryStore& store_;
    std::map<std::uint32_t, StartedRun> runs_; ///< by run number; numbers are reused
    bool programStarted_ = false;
};

} // namespace scheduler
