#include "benches/benches.h"
#include "benches/comparison.h"
#include "benches/entries.h"
#include "scheduler/run/engine.h"

namespace bench {
namespace {

/// An engine without due entries calls none of these.
class UnusedServices : public scheduler::RunLauncher,
                       public scheduler::OutcomeSource,
                       public scheduler::ScheduleStore,
                       public scheduler::UserMessages,
                       public scheduler::EngineListener,
                       public scheduler::RunListener {
public:
    bool launch(const scheduler::ScheduledProject&) override { return false; }
    scheduler::RunOutcome take(std::uint32_t) override { return {}; }
    void save(const scheduler::ScheduleList&) override {}
    void showError(const std::string&) override {}
    void showNotice(const std::string&) override {}
    void onSuspendedChanged(bool) override {}
    void onRunStarted(const scheduler::ScheduledProject&, bool) noexcept override {}
    void onRunFinished(const scheduler::FinishedRun&) noexcept override {}
};

[[gnu::noinline]] bool anyDue(const scheduler::ScheduleList& list, base::TimeValue now) {
    bool due = false;
    for (const scheduler::ScheduledProject& entry : list)
        due |= now >= entry.nextRun && !entry.disabled && !entry.running;
    return due;
}

} // namespace

void benchTicks() {
    for (const std::size_t count : {1000U, 100000U, 1000000U}) {
        scheduler::ScheduleList list;
        list.assign(manyEntries(count));
        scheduler::RunPolicy policy;
        UnusedServices services;
        scheduler::SchedulerEngine engine(
            list, policy, {base::systemClock(), services, services, services, services, services, services});
        const auto subject = [&] { return secondsOf([&] { engine.onTimer(referenceTime()); }); };
        const auto limit = [&] { return secondsOf([&] { keep(anyDue(list, referenceTime())); }); };
        compare({"a tick with nothing due", count, "entries", "one pass over the same fields", 1.5}, subject,
                limit);
    }
}

} // namespace bench
