#include "benches/benches.h"
#include "benches/comparison.h"
#include "benches/entries.h"
#include "scheduler/model/nextrun.h"

#include <ctime>
#include <string>

namespace bench {
namespace {

using base::TimeSpan;
using base::TimeValue;
using scheduler::ScheduledProject;
using scheduler::ScheduleKind;

constexpr std::size_t calls = 100000;

// The lower bounds make only the runtime calls of each rule.
std::time_t localTime(std::time_t t) {
    return std::localtime(&t)->tm_mday;
}

std::time_t makeTime(int hour) {
    std::tm fields{};
    fields.tm_year = 126;
    fields.tm_mon = 5;
    fields.tm_mday = 15;
    fields.tm_hour = hour;
    fields.tm_isdst = -1;
    return std::mktime(&fields);
}

[[gnu::noinline]] std::time_t hourlyCalls(std::time_t now) {
    return localTime(now) + makeTime(13);
}

/// Runtime calls for the current date, the start of its day or month, and the entry's time of day.
[[gnu::noinline]] std::time_t clockCalls(std::time_t now) {
    return localTime(std::time(nullptr)) + makeTime(0) + localTime(now);
}

/// For the kinds that need no runtime call. Dispatches by kind like computeNextRun(), with its parameters.
[[gnu::noipa]] std::time_t noCalls(const scheduler::EngineState& state, const ScheduledProject& entry,
                                   std::time_t now, const base::Clock& /*clock*/) {
    switch (entry.kind) {
    case ScheduleKind::AtStartup:
        return state.startupFlag ? 0 : 0x7FFFFFFF;
    case ScheduleKind::Once:
        return now < entry.time.seconds() ? entry.time.seconds() : 0x7FFFFFFF;
    case ScheduleKind::Hourly:
        return hourlyCalls(now);
    case ScheduleKind::Daily:
    case ScheduleKind::Monthly:
        return clockCalls(now);
    case ScheduleKind::AfterProject:
        break;
    }
    return 0x7FFFFFFF;
}

template<class Calls>
void benchRule(const char* what, const char* limitName, const ScheduledProject& entry,
               const Calls& runtimeCalls) {
    const scheduler::EngineState state;
    const base::Clock& clock = base::systemClock();
    const auto subject = [&] {
        return secondsOf([&] {
            TimeValue now = referenceTime();
            for (std::size_t i = 0; i < calls; ++i, now = now + TimeSpan::fromSeconds(1))
                keep(scheduler::computeNextRun(state, entry, now, clock));
        });
    };
    const auto limit = [&] {
        return secondsOf([&] {
            std::time_t now = referenceTime().seconds();
            for (std::size_t i = 0; i < calls; ++i, ++now)
                keep(runtimeCalls(now));
        });
    };
    compare({std::string("next run: ") + what, calls, "calls", limitName, 1.3}, subject, limit);
}

} // namespace

void benchNextRuns() {
    ScheduledProject entry;
    entry.minutes = 30;
    entry.dayOfMonth = 40; // always in the future, so the next month is not needed
    // Noon, because a daily entry near midnight needs more calendar calls.
    entry.time = TimeValue::fromLocal(2037, 6, 15, 12, 0, 0, -1);
    const scheduler::EngineState state;
    const base::Clock& clock = base::systemClock();
    const auto none = [&](std::time_t now) { return noCalls(state, entry, now, clock); };
    const auto setKind = [&](ScheduleKind kind) { entry.kind = kind; };

    setKind(ScheduleKind::AfterProject);
    benchRule("after another", "choosing the rule, a comparison", entry, none);
    setKind(ScheduleKind::AtStartup);
    benchRule("at start-up", "choosing the rule, a comparison", entry, none);
    setKind(ScheduleKind::Hourly);
    benchRule("hourly", "1 localtime, 1 mktime", entry, hourlyCalls);
    setKind(ScheduleKind::Daily);
    benchRule("daily", "time, 2 localtime, 1 mktime", entry, clockCalls);
    setKind(ScheduleKind::Monthly);
    benchRule("monthly", "time, 2 localtime, 1 mktime", entry, clockCalls);
    setKind(ScheduleKind::Once);
    benchRule("once", "choosing the rule, a comparison", entry, none);
}

} // namespace bench
