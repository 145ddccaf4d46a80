#include "benches/plaintexts.h"

#include <windows.h>

#include <array>
#include <cstdio>
#include <ctime>

namespace bench {
namespace {

using scheduler::ScheduleColumn;
using scheduler::ScheduledProject;
using scheduler::ScheduleKind;

using Buffer = std::array<char, 128>;

std::tm localTime(base::TimeValue t) {
    const std::time_t seconds = t.seconds();
    return *std::localtime(&seconds);
}

SYSTEMTIME systemTime(const std::tm& local) {
    SYSTEMTIME time{};
    time.wYear = static_cast<WORD>(local.tm_year + 1900);
    time.wMonth = static_cast<WORD>(local.tm_mon + 1);
    time.wDay = static_cast<WORD>(local.tm_mday);
    time.wHour = static_cast<WORD>(local.tm_hour);
    time.wMinute = static_cast<WORD>(local.tm_min);
    return time;
}

void timeText(const std::tm& local, Buffer& out) {
    const SYSTEMTIME time = systemTime(local);
    GetTimeFormatA(LOCALE_USER_DEFAULT, TIME_NOSECONDS, &time, nullptr, out.data(), 128);
}

void dateText(const std::tm& local, Buffer& out) {
    const SYSTEMTIME time = systemTime(local);
    GetDateFormatA(LOCALE_USER_DEFAULT, DATE_SHORTDATE, &time, nullptr, out.data(), 128);
}

template<class... Arguments>
std::string printed(const char* pattern, Arguments... arguments) {
    Buffer buffer;
    const int length = std::snprintf(buffer.data(), buffer.size(), pattern, arguments...);
    return {buffer.data(), static_cast<std::size_t>(length)};
}

std::string projectText(const ScheduledProject& entry) {
    const std::size_t start = entry.path.rfind('\\') + 1;
    return entry.path.substr(start, entry.path.rfind('.') - start);
}

std::string scheduleText(const scheduler::ScheduleList& list, const ScheduledProject& entry) {
    Buffer time;
    Buffer date;
    switch (entry.kind) {
    case ScheduleKind::AfterProject:
        return printed("%d minutes after project %s is finished", entry.minutes,
                       projectText(list[static_cast<std::size_t>(entry.afterIndex)]).c_str());
    case ScheduleKind::AtStartup:
        return printed("%d minutes after startup", entry.minutes);
    case ScheduleKind::Hourly:
        return printed("hourly at %d minutes after the hour", entry.minutes);
    case ScheduleKind::Daily:
        timeText(localTime(entry.time), time);
        return printed("every day at %s", time.data());
    case ScheduleKind::Monthly:
        timeText(localTime(entry.time), time);
        return printed("on day %d of every month at %s", entry.dayOfMonth, time.data());
    case ScheduleKind::Once:
        break;
    }
    const std::tm local = localTime(entry.time);
    dateText(local, date);
    timeText(local, time);
    return printed("on %s at %s", date.data(), time.data());
}

std::string parametersText(const ScheduledProject& entry) {
    if (entry.runCommand == scheduler::RunCommand::RelinkFiles)
        return std::string(scheduler::runCommandNames[2]);
    Buffer limit{};
    Buffer dialup{};
    const std::string_view name = scheduler::runCommandNames[static_cast<std::size_t>(entry.runCommand)];
    if (entry.timeLimitMinutes != 0)
        std::snprintf(limit.data(), limit.size(), " for up to %d minutes", entry.timeLimitMinutes);
    if (!entry.dialupEntry.empty())
        std::snprintf(dialup.data(), dialup.size(), " via %s", entry.dialupEntry.c_str());
    return printed("%s%s%s%s", name.data(), limit.data(), dialup.data(),
                   entry.disconnectWhenDone ? "; disconnect when done" : "");
}

std::string relativeText(base::TimeValue t, base::TimeValue now) {
    const std::tm local = localTime(t);
    const std::tm today = localTime(now);
    Buffer time;
    timeText(local, time);
    if (local.tm_yday == today.tm_yday)
        return printed("today at %s", time.data());
    Buffer day;
    std::strftime(day.data(), day.size(), "%a %b %d", &local);
    return printed("%s at %s", day.data(), time.data());
}

std::string nextRunText(const scheduler::ScheduleList& list, const ScheduledProject& entry) {
    const base::TimeValue now = base::TimeValue::now();
    switch (entry.kind) {
    case ScheduleKind::AfterProject:
        return "waiting for " + projectText(list[static_cast<std::size_t>(entry.afterIndex)]);
    case ScheduleKind::AtStartup:
        return "next startup";
    case ScheduleKind::Hourly:
    case ScheduleKind::Daily:
    case ScheduleKind::Monthly:
    case ScheduleKind::Once:
        break;
    }
    return relativeText(entry.nextRun, now);
}

} // namespace

std::string plainText(const scheduler::ScheduleList& list, std::size_t position, ScheduleColumn column) {
    const ScheduledProject& entry = list[position];
    switch (column) {
    case ScheduleColumn::Project:
        return projectText(entry);
    case ScheduleColumn::Schedule:
        return scheduleText(list, entry);
    case ScheduleColumn::Parameters:
        return parametersText(entry);
    case ScheduleColumn::NextRun:
        return nextRunText(list, entry);
    case ScheduleColumn::LastRun:
        return entry.lastRun == base::TimeValue() ? "Never"
                                                  : relativeText(entry.lastRun, base::TimeValue::now());
    case ScheduleColumn::LastResult:
        return entry.lastResult;
    }
    return {};
}

} // namespace bench
