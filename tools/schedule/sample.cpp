#include "tools/schedule/sample.h"

#include "lib/base/files.h"
#include "scheduler/model/schedulefile.h"

#include <filesystem>
#include <fstream>
#include <string_view>
#include <utility>

namespace {

using scheduler::ScheduledProject;
using scheduler::ScheduleKind;

constexpr std::string_view newsProject = "# Takes three seconds and goes well.\n"
                                         "seconds=3\n";
constexpr std::string_view mirrorProject = "# Takes a second and leaves a text.\n"
                                           "seconds=1\n"
                                           "result=2 pages could not be found\n";
constexpr std::string_view reportProject = "# Over at once.\n";

bool writeText(const std::string& path, std::string_view text) {
    std::ofstream file(path, std::ios::binary);
    file << text;
    file.close();
    return file.good();
}

ScheduledProject once(std::string path, base::TimeValue time) {
    ScheduledProject entry;
    entry.path = std::move(path);
    entry.kind = ScheduleKind::Once;
    entry.time = time;
    entry.nextRun = time;
    return entry;
}

ScheduledProject afterFirst(std::string path) {
    ScheduledProject entry;
    entry.path = std::move(path);
    entry.kind = ScheduleKind::AfterProject;
    entry.afterIndex = 0;
    entry.nextRun = base::TimeValue::never();
    return entry;
}

/// The sample spider's, when it stands in the folder, or else one that every Windows has. The run number has
/// it log its start and its end; it is one that no scheduled run of the sample gets.
std::string commandLine(const std::string& folder) {
    const std::string spider = folder + "spider.exe";
    if (!base::fileExists(spider))
        return "run:cmd /c exit";
    return "run:\"" + spider + "\" /s99 /e \"" + folder + "report.kra\"";
}

} // namespace

bool writeSample(const std::string& folder, unsigned seconds) {
    std::error_code error;
    const std::filesystem::path made = std::filesystem::absolute(folder, error);
    std::filesystem::create_directories(made, error);
    const std::string prefix = (made / "").make_preferred().string();
    if (!writeText(prefix + "news.kra", newsProject) || !writeText(prefix + "mirror.krb", mirrorProject) ||
        !writeText(prefix + "report.kra", reportProject))
        return false;

    const base::TimeValue start =
        base::TimeValue::now() + base::TimeSpan::fromSeconds(static_cast<std::int32_t>(seconds));
    scheduler::ScheduleList list;
    list.append(once(prefix + "news.kra", start));
    list.append(once(commandLine(prefix), start));
    list.append(afterFirst(prefix + "mirror.krb"));
    return scheduler::saveSchedule(list);
}
