// Compares the idle program with an empty program that runs at the same time.
#include "benches/entries.h"
#include "benches/program/hostprocess.h"
#include "benches/program/processes.h"
#include "benches/program/programbenches.h"
#include "benches/table.h"
#include "tests/program/scheduledriver.h"

#include <string>
#include <vector>

namespace bench {
namespace {

constexpr std::size_t entryCount = 1000;
constexpr double wantedTime = 1.5;
constexpr double wantedMemory = 1.2;

/// None becomes due during the benchmark.
std::vector<scheduler::ScheduledProject> idleEntries() {
    std::vector<scheduler::ScheduledProject> entries = manyEntries(entryCount);
    for (scheduler::ScheduledProject& entry : entries) {
        if (entry.kind == scheduler::ScheduleKind::AfterProject)
            continue;
        entry.kind = scheduler::ScheduleKind::Once;
        entry.time = entry.time + base::TimeSpan::fromDays(1);
    }
    return entries;
}

void idle(const std::string& how, const std::string& switches, WORD emptyShow, int seconds) {
    // Under Wine, the window below the pointer polls its position several times a second.
    SetCursorPos(GetSystemMetrics(SM_CXSCREEN) - 1, GetSystemMetrics(SM_CYSCREEN) - 1);
    WindowProcess program(schedulerCommand() + switches, schedulerClass);
    WindowProcess empty(emptyProgramCommand(entryCount), emptyProgramClass, emptyShow);
    program.waitUntilCreated();
    empty.waitUntilCreated();
    // Let the start-up work finish.
    Sleep(3000);
    const HostProcess host("scheduler.exe");
    const HostProcess emptyHost("emptyprogram.exe");
    const double before = host.processorTime();
    const double emptyBefore = emptyHost.processorTime();
    Sleep(static_cast<DWORD>(seconds) * 1000);
    const double programTime = host.processorTime() - before;
    const double emptyTime = emptyHost.processorTime() - emptyBefore;
    const double programMemory = host.privateMegabytes();
    const double emptyMemory = emptyHost.privateMegabytes();
    const std::string amount = std::to_string(seconds) + " s, 1,000 entries";
    print({"idle " + how + ": processor time", amount, programTime, 0, 0,
           "an empty program with the same timers", emptyTime, programTime / emptyTime, wantedTime});
    print({"idle " + how + ": private memory", amount, programMemory, 0, 0,
           "an empty program with the same timers", emptyMemory, programMemory / emptyMemory, wantedMemory,
           "MB"});
}

} // namespace

void benchIdling(int seconds) {
    clearPreferences();
    driver::saveEntries(idleEntries());
    idle("shown", "", SW_SHOWNORMAL, seconds);
    idle("hidden", " /s", SW_HIDE, seconds);
}

} // namespace bench
