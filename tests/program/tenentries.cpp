// Writes a schedule of ten entries of every kind: for the test with real input, and for pictures.

#include "tests/program/scheduledriver.h"

#include <utility>

using base::TimeSpan;
using base::TimeValue;
using scheduler::RunCommand;
using scheduler::ScheduledProject;
using scheduler::ScheduleKind;

namespace {

ScheduledProject entry(std::string path, ScheduleKind kind, TimeValue time = TimeValue()) {
    ScheduledProject made;
    made.path = std::move(path);
    made.kind = kind;
    made.time = time;
    return made;
}

std::vector<ScheduledProject> tenEntries(TimeValue now) {
    std::vector<ScheduledProject> entries = {
        entry("C:\\Sites\\news.kra", ScheduleKind::Daily, now + TimeSpan::fromMinutes(300)),
        entry("C:\\Sites\\archive.kra", ScheduleKind::AfterProject),
        entry("C:\\Sites\\weather.krb", ScheduleKind::Hourly),
        entry("C:\\Sites\\prices.kra", ScheduleKind::Daily, now - TimeSpan::fromMinutes(90)),
        entry("C:\\Sites\\statistics.kra", ScheduleKind::Monthly, now),
        entry("C:\\Sites\\conference.krc", ScheduleKind::Once, now + TimeSpan::fromDays(1)),
        entry("C:\\Sites\\mirror.kra", ScheduleKind::AtStartup),
        entry("C:\\Sites\\old shop.kra", ScheduleKind::Daily, now),
        entry("run:C:\\Tools\\backup.exe /all", ScheduleKind::AfterProject),
        entry("C:\\Sites\\summit.kra", ScheduleKind::Once, now - TimeSpan::fromDays(2)),
    };
    entries[0].lastRun = now - TimeSpan::fromMinutes(19 * 60);
    entries[1].minutes = 5;
    entries[1].runCommand = RunCommand::RunUpdateOnly;
    entries[1].timeLimitMinutes = 90;
    entries[1].lastRun = now - TimeSpan::fromMinutes(18 * 60);
    entries[2].minutes = 15;
    entries[2].runCommand = RunCommand::RunUpdateOnly;
    entries[2].lastRun = now - TimeSpan::fromMinutes(40);
    entries[2].lastResult = "2 pages could not be found";
    entries[3].weekdays = {1, 0, 1, 0, 1, 0, 0};
    entries[3].runCommand = RunCommand::RunCompleteRefresh;
    entries[4].dayOfMonth = 31;
    entries[4].lastRun = now - TimeSpan::fromDays(21);
    entries[5].dialupEntry = "Office line";
    entries[5].disconnectWhenDone = 1;
    entries[6].runCommand = RunCommand::RelinkFiles;
    entries[7].disabled = 1;
    entries[7].lastRun = now - TimeSpan::fromDays(400);
    entries[7].lastResult = "Could not run on schedule; another project was already running.";
    entries[8].afterIndex = 4;
    entries[9].lastRun = now - TimeSpan::fromDays(2);
    return entries;
}

} // namespace

int main() {
    const std::vector<ScheduledProject> entries = tenEntries(TimeValue::now());
    driver::saveEntries(entries);
    return driver::savedSchedule().size() == entries.size() ? 0 : 1;
}
