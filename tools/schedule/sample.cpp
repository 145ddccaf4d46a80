#include "tools/schedule/sample.h"

#include "lib/base/files.h"
#include "scheduler/model/nextrun.h"
#include "scheduler/model/schedulefile.h"

#include <filesystem>
#include <fstream>
#include <string_view>
#include <utility>
#include <vector>

namespace {

using scheduler::RunCommand;
using scheduler::ScheduledProject;
using scheduler::ScheduleKind;

struct ProjectFile {
    std::string_view name;
    std::string_view content;
};

constexpr ProjectFile projectFiles[] = {
    {.name = "news.kra", .content = "# Takes three seconds and succeeds.\nseconds=3\n"},
    {.name = "report.kra", .content = "# Ends at once.\n"},
    {.name = "mirror.krb",
     .content = "# Takes a second and leaves a text.\nseconds=1\nresult=2 pages not found\n"},
    {.name = "prices.kra", .content = "# Takes two seconds and succeeds.\nseconds=2\n"},
    {.name = "archive.krb", .content = "# Takes ten seconds and succeeds.\nseconds=10\n"},
    {.name = "statistics.krc", .content = "# Takes a minute and succeeds.\nseconds=60\n"},
    {.name = "conference.krc", .content = "# Fails.\nresult=The server does not answer.\nerror=5\n"},
    {.name = "weather.krb", .content = "# Ends at once.\n"},
    {.name = "old shop.kra", .content = "# Ends at once.\n"},
    {.name = "summit.kra", .content = "# Ends at once.\n"},
    {.name = "backup.bat", .content = "@rem Ends at once.\n"},
};

bool writeText(const std::string& path, std::string_view text) {
    std::ofstream file(path, std::ios::binary);
    file << text;
    file.close();
    return file.good();
}

ScheduledProject entryOf(std::string path, ScheduleKind kind, base::TimeValue time = {}) {
    ScheduledProject entry;
    entry.path = std::move(path);
    entry.kind = kind;
    entry.time = time;
    return entry;
}

/// Runs the sample spider if it is in the folder, otherwise a batch file. The run number makes the spider log
/// its start and end, and differs from the numbers of the sample's scheduled runs.
std::string commandLine(const std::string& folder) {
    const std::string spider = folder + "spider.exe";
    if (!base::fileExists(spider))
        return "run:\"" + folder + "backup.bat\"";
    return "run:\"" + spider + "\" /s99 /e \"" + folder + "report.kra\"";
}

} // namespace

std::vector<ScheduledProject> sampleEntries(const std::string& folder, const base::Clock& clock,
                                            unsigned seconds) {
    const base::TimeValue now = clock.now();
    const base::TimeValue start = now + base::TimeSpan::fromSeconds(static_cast<std::int32_t>(seconds));
    // A full hour, about half a day from now.
    const base::TimeValue farHour = scheduler::hourStart(now) + base::TimeSpan::fromMinutes(12 * 60);

    std::vector<ScheduledProject> entries = {
        entryOf(folder + "news.kra", ScheduleKind::Once, start),
        entryOf(commandLine(folder), ScheduleKind::Once, start),
        entryOf(folder + "mirror.krb", ScheduleKind::AfterProject),
        entryOf(folder + "prices.kra", ScheduleKind::Hourly),
        entryOf(folder + "archive.krb", ScheduleKind::Daily, farHour),
        entryOf(folder + "statistics.krc", ScheduleKind::Monthly, farHour),
        entryOf(folder + "conference.krc", ScheduleKind::Once, now + base::TimeSpan::fromDays(1)),
        entryOf(folder + "weather.krb", ScheduleKind::AtStartup),
        entryOf(folder + "old shop.kra", ScheduleKind::Daily, farHour),
        entryOf(folder + "summit.kra", ScheduleKind::Once, now - base::TimeSpan::fromDays(2)),
    };
    entries[2].afterIndex = 0;
    entries[3].minutes = (now.local().minute + 30) % 60;
    entries[3].runCommand = RunCommand::RunUpdateOnly;
    entries[3].lastRun = now - base::TimeSpan::fromMinutes(30);
    entries[3].lastResult = "2 pages not found";
    entries[4].weekdays = {1, 0, 1, 0, 1, 0, 0};
    entries[4].timeLimitMinutes = 90;
    entries[5].dayOfMonth = 1;
    entries[5].runCommand = RunCommand::RunCompleteRefresh;
    entries[6].dialupEntry = "Office line";
    entries[6].disconnectWhenDone = 1;
    entries[7].runCommand = RunCommand::RelinkFiles;
    entries[8].disabled = 1;
    entries[8].lastRun = now - base::TimeSpan::fromDays(400);
    entries[8].lastResult = "The server does not answer.";
    entries[9].lastRun = entries[9].time;

    for (ScheduledProject& entry : entries)
        entry.nextRun = computeNextRun({}, entry, now, clock);
    return entries;
}

bool writeSample(const std::string& folder, Sample sample, unsigned seconds) {
    std::error_code error;
    const std::filesystem::path made = std::filesystem::absolute(folder, error);
    std::filesystem::create_directories(made, error);
    const std::string prefix = (made / "").make_preferred().string();
    for (const auto& [name, content] : projectFiles)
        if (!writeText(prefix + std::string(name), content))
            return false;

    std::vector<ScheduledProject> entries = sampleEntries(prefix, base::systemClock(), seconds);
    if (sample == Sample::DueSoon)
        entries.resize(3);
    scheduler::ScheduleList list;
    for (ScheduledProject& entry : entries)
        list.append(std::move(entry));
    return scheduler::saveSchedule(list);
}
