#include "scheduler/model/descriptions.h"

#include "lib/base/formatting.h"
#include "lib/base/locale.h"
#include "lib/base/paths.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string_view>

namespace scheduler {
namespace {

const std::string unknown = "(unknown)";
const std::string never = "Never";

constexpr std::int32_t wholeDay = 86400;
// Zone offsets are multiples of 15 minutes, so local midnight is too.
constexpr std::int32_t quarterOfAnHour = 900;

/// The first moment after `now` that is a whole number of steps from `origin`.
base::TimeValue nextMultiple(base::TimeValue now, base::TimeValue origin, std::int32_t step) {
    const std::int64_t steps = (std::int64_t{now.seconds()} - origin.seconds()) % step;
    return now + base::TimeSpan::fromSeconds(static_cast<std::int32_t>(steps < 0 ? -steps : step - steps));
}

bool hasRun(const ScheduledProject& entry) {
    return entry.lastRun != base::TimeValue() && entry.lastRun != base::TimeValue::never();
}

std::string timeOfDayText(const ScheduledProject& entry) {
    return base::formatLocaleTime(entry.time, false, true);
}

std::string dayList(const ScheduledProject& entry) {
    static constexpr std::array<std::string_view, 7> names = {"Mon/", "Tue/", "Wed/", "Thu/",
                                                              "Fri/", "Sat/", "Sun/"};
    std::string list;
    for (std::size_t day = 0; day < names.size(); ++day)
        if (entry.weekdays[day])
            list += names[day];
    if (!list.empty())
        list.pop_back();
    return list;
}

std::string describeAfterProject(const ScheduledProject& entry, const ScheduleList& schedule) {
    const std::string name = followedName(entry, schedule);
    switch (entry.minutes) {
    case 0:
        return base::format("when project %s is finished", name);
    case 1:
        return base::format("1 minute after project %s is finished", name);
    default:
        return base::format("%s minutes after project %s is finished", std::to_string(entry.minutes), name);
    }
}

std::string describeAtStartup(const ScheduledProject& entry) {
    switch (entry.minutes) {
    case 0:
        return "at startup";
    case 1:
        return "1 minute after startup";
    default:
        return base::format("%s minutes after startup", std::to_string(entry.minutes));
    }
}

std::string describeHourly(const ScheduledProject& entry) {
    switch (entry.minutes) {
    case 0:
        return "hourly on the hour";
    case 1:
        return "hourly at 1 minute after the hour";
    default:
        return base::format("hourly at %s minutes after the hour", std::to_string(entry.minutes));
    }
}

std::string describeDaily(const ScheduledProject& entry) {
    if (std::ranges::all_of(entry.weekdays, [](std::uint8_t flag) { return flag != 0; }))
        return base::format("every day at %s", timeOfDayText(entry));
    return base::format("every %s at %s", dayList(entry), timeOfDayText(entry));
}

} // namespace

std::string displayName(const ScheduledProject& entry) {
    return isCommandLine(entry) ? entry.path : base::baseNameOf(entry.path);
}

std::string followedName(const ScheduledProject& entry, const ScheduleList& schedule) {
    const auto position = static_cast<std::size_t>(entry.afterIndex);
    return entry.afterIndex >= 0 && position < schedule.size() ? displayName(schedule[position]) : unknown;
}

std::string describeSchedule(const ScheduledProject& entry, const ScheduleList& schedule) {
    switch (entry.kind) {
    case ScheduleKind::AfterProject:
        return describeAfterProject(entry, schedule);
    case ScheduleKind::AtStartup:
        return describeAtStartup(entry);
    case ScheduleKind::Hourly:
        return describeHourly(entry);
    case ScheduleKind::Daily:
        return describeDaily(entry);
    case ScheduleKind::Monthly:
        return base::format("on day %s of every month at %s", std::to_string(entry.dayOfMonth),
                            timeOfDayText(entry));
    case ScheduleKind::Once:
        break;
    }
    if (entry.time == base::TimeValue())
        return unknown;
    return base::format("on %s at %s", base::formatLocaleDate(entry.time, false), timeOfDayText(entry));
}

std::string describeRun(const ScheduledProject& entry) {
    const auto command = static_cast<std::size_t>(entry.runCommand);
    std::string text(command < runCommandNames.size() ? runCommandNames[command] : std::string_view());
    // Relinking uses no connection and has no time limit.
    if (entry.runCommand == RunCommand::RelinkFiles)
        return text;
    if (entry.timeLimitMinutes != 0)
        text += base::format(" %s %s %s", "for up to", std::to_string(entry.timeLimitMinutes),
                             entry.timeLimitMinutes == 1 ? "minute" : "minutes");
    if (!entry.dialupEntry.empty())
        text += base::format(" %s %s", "via", entry.dialupEntry);
    if (entry.disconnectWhenDone)
        text += base::format("; %s", "disconnect when done");
    return text;
}

std::string describeNextRun(const ScheduledProject& entry, const ScheduleList& schedule,
                            const EngineState& state, const base::Clock& clock) {
    if (entry.running)
        return "Running";
    if (entry.disabled)
        return "(disabled)";
    if (state.suspended)
        return "(suspended)";
    const base::TimeValue now = clock.now();
    if (now >= entry.nextRun)
        return "Now";
    switch (entry.kind) {
    case ScheduleKind::AfterProject:
        // Even if the next run is already set: for the user, the entry still depends on the other project.
        return "waiting for " + followedName(entry, schedule);
    case ScheduleKind::AtStartup:
        return "next startup";
    case ScheduleKind::Hourly:
    case ScheduleKind::Daily:
    case ScheduleKind::Monthly:
    case ScheduleKind::Once:
        break;
    }
    return entry.nextRun == base::TimeValue::never() ? "(never)" : base::formatRelative(entry.nextRun, now);
}

std::string describeLastRun(const ScheduledProject& entry, base::TimeValue now) {
    return hasRun(entry) ? base::formatRelative(entry.lastRun, now) : never;
}

std::string describeLastRun(const ScheduledProject& entry, const base::Clock& clock) {
    return hasRun(entry) ? base::formatRelative(entry.lastRun, clock.now()) : never;
}

base::TimeValue phrasesValidUntil(const ScheduledProject& entry, base::TimeValue now) {
    base::TimeValue until = nextMultiple(now, base::TimeValue(), quarterOfAnHour);
    for (const base::TimeValue t : {entry.nextRun, entry.lastRun}) {
        // The number of days until a future time changes one second after its time of day. The number of days
        // since a past time changes exactly at its time of day.
        for (const std::int32_t delay : {0, 1})
            until = std::min(until, nextMultiple(now, t + base::TimeSpan::fromSeconds(delay), wholeDay));
    }
    return until;
}

} // namespace scheduler
