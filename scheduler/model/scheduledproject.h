#pragma once

#include "lib/base/dates.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace scheduler {

/// The rule for the next run. An entry with an unknown value keeps it and never runs.
enum class ScheduleKind : std::int32_t {
    AfterProject = 0,
    AtStartup = 1,
    Hourly = 2,
    Daily = 3,
    Monthly = 4,
    Once = 5,
};

inline constexpr int kindCount = 6;

enum class RunCommand : std::int32_t {
    RunNormally = 0,
    RunUpdateOnly = 1,
    RelinkFiles = 2,
    RunCompleteRefresh = 3,
};

/// In the order of RunCommand.
inline constexpr std::array<std::string_view, 4> runCommandNames = {"Run normally", "Run update only",
                                                                    "Relink files", "Run complete refresh"};

/// One entry of the schedule. The fields are in the order of the schedule file.
struct ScheduledProject {
    std::string path;        ///< a project file's full path, or a command line after "run:"
    std::string lastResult;  ///< outcome of the last run; empty after success or before the first run
    base::TimeValue lastRun; ///< start of the last finished run; 0: never ran
    ScheduleKind kind = ScheduleKind::AfterProject;
    base::TimeValue time;        ///< daily, monthly: only the local time of day counts; once: date and time
    std::int32_t minutes = 0;    ///< after a project, at start-up: delay; hourly: minute of the hour
    std::int32_t afterIndex = 0; ///< after a project: position of the followed entry
    std::array<std::uint8_t, 7> weekdays = {1, 1, 1, 1, 1, 1, 1}; ///< daily: Monday to Sunday, 1: runs
    std::int32_t dayOfMonth = 1;
    RunCommand runCommand = RunCommand::RunNormally;
    std::string dialupEntry;           ///< phone-book entry; empty: none
    std::int32_t timeLimitMinutes = 0; ///< 0: no limit
    std::uint8_t disconnectWhenDone = 0;
    std::uint8_t disabled = 0;
    std::uint8_t running = 0;
    base::TimeValue waitingSince; ///< when a due entry began to wait for another project; 0: not waiting
    base::TimeValue runStart;
    std::int32_t runNumber = 0; ///< identifies the run in progress in its end notice and its outcome
    base::TimeValue nextRun;    ///< 0: at once; TimeValue::never(): not at all
    std::uint32_t retryLimit = 0;
    std::uint32_t retriesDone = 0;
    std::int32_t retryIntervalMinutes = 15;

    friend bool operator==(const ScheduledProject&, const ScheduledProject&) = default;
};

/// A `path` with this prefix is a command line. Case-sensitive.
inline constexpr std::string_view commandLinePrefix = "run:";

[[nodiscard]] inline bool isCommandLine(std::string_view path) {
    return path.starts_with(commandLinePrefix);
}
[[nodiscard]] inline bool isCommandLine(const ScheduledProject& entry) {
    return isCommandLine(entry.path);
}

void resetRunState(ScheduledProject& entry);

} // namespace scheduler
