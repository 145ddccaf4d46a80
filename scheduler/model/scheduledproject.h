// One entry of the schedule: what is run, when, how, and the state of its run.
#pragma once

#include "lib/base/dates.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace scheduler {

/// Which rule gives an entry its next run. A value outside the list is kept as it is and never runs.
enum class ScheduleKind : std::int32_t {
    AfterProject = 0,
    AtStartup = 1,
    Hourly = 2,
    Daily = 3,
    Monthly = 4,
    Once = 5,
};

/// The kinds have the values from 0 to below this.
inline constexpr int kindCount = 6;

/// What the spider is told to do with the project.
enum class RunCommand : std::int32_t {
    RunNormally = 0,
    RunUpdateOnly = 1,
    RelinkFiles = 2,
    RunCompleteRefresh = 3,
};

/// The run commands' names in the order of their values: for descriptions and for the editor's list.
inline constexpr std::array<std::string_view, 4> runCommandNames = {"Run normally", "Run update only",
                                                                    "Relink files", "Run complete refresh"};

/// A plain value: copying it copies its strings. The fields stand in the order of the schedule file.
struct ScheduledProject {
    std::string path;        ///< a project file's full path, or a command line behind "run:"
    std::string lastResult;  ///< text of the last run's outcome; empty after a good run or none
    base::TimeValue lastRun; ///< start of the last finished run; 0 = never ran
    ScheduleKind kind = ScheduleKind::AfterProject;
    base::TimeValue time;        ///< daily, monthly: its local time of day counts; once: the date and time
    std::int32_t minutes = 0;    ///< after a project, at start-up: delay; hourly: minute after the hour
    std::int32_t afterIndex = 0; ///< after a project: the followed entry's position in the schedule
    std::array<std::uint8_t, 7> weekdays = {1, 1, 1, 1, 1, 1, 1}; ///< daily: Monday first, 1 = runs
    std::int32_t dayOfMonth = 1;                                  ///< monthly: counting from 1
    RunCommand runCommand = RunCommand::RunNormally;
    std::string dialupEntry;             ///< phone-book entry to connect through; empty = none
    std::int32_t timeLimitMinutes = 0;   ///< 0 = no limit
    std::uint8_t disconnectWhenDone = 0; ///< 1 = hang up after the run
    std::uint8_t disabled = 0;           ///< 1 = never started
    std::uint8_t running = 0;            ///< 1 = a run is in progress
    base::TimeValue waitingSince; ///< since when a due entry waits for another project; 0 = it does not wait
    base::TimeValue runStart;     ///< start of the run in progress
    std::int32_t runNumber = 0;   ///< ties the run in progress to its end notice and its outcome
    base::TimeValue nextRun;      ///< 0 = at once; TimeValue::never() = not at all
    std::uint32_t retryLimit = 0; ///< how often a failed run is tried again
    std::uint32_t retriesDone = 0;
    std::int32_t retryIntervalMinutes = 15; ///< between a failed run and its retry

    friend bool operator==(const ScheduledProject&, const ScheduledProject&) = default;
};

/// What `path` begins with, case-sensitively, when the rest of it is a command line.
inline constexpr std::string_view commandLinePrefix = "run:";

/// Whether what is run is a command line instead of a project file.
[[nodiscard]] inline bool isCommandLine(std::string_view path) {
    return path.starts_with(commandLinePrefix);
}
[[nodiscard]] inline bool isCommandLine(const ScheduledProject& entry) {
    return isCommandLine(entry.path);
}

/// Puts the entry back to "not running, not waiting, not retried".
void resetRunState(ScheduledProject& entry);

} // namespace scheduler
