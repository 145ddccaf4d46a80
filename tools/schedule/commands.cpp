#include "tools/schedule/commands.h"

#include "scheduler/ui/programtexts.h"
#include "tools/schedule/sample.h"
#include "tools/schedule/storedschedule.h"
#include "tools/schedule/table.h"

#include <windows.h>

#include <algorithm>
#include <charconv>
#include <cstdio>

namespace {

constexpr DWORD pollInterval = 200; // milliseconds

int usage() {
    std::fputs("usage: schedule sample DIR [SECONDS]\n"
               "                                  write sample projects into DIR, and replace the schedule\n"
               "                                  with ten entries of every kind: three are due in\n"
               "                                  SECONDS (8) and soon after\n"
               "       schedule demo DIR [SECONDS]\n"
               "                                  the same with these three alone\n"
               "       schedule show              print the schedule\n"
               "       schedule wait N SECONDS    wait until N entries have run, but no longer than that\n",
               stderr);
    return Misused;
}

int fail(const char* message) {
    std::fprintf(stderr, "schedule: %s\n", message);
    return Failed;
}

/// A running scheduler keeps its schedule in memory and would overwrite the new file. Its title differs while
/// it is suspended.
bool schedulerIsRunning() {
    return FindWindowA(nullptr, scheduler::titleFor(false).c_str()) ||
           FindWindowA(nullptr, scheduler::titleFor(true).c_str());
}

int makeSample(const std::string& folder, Sample sample, unsigned seconds) {
    if (schedulerIsRunning())
        return fail("the scheduler is running, and its schedule stays as it is");
    return writeSample(folder, sample, seconds) ? Succeeded : fail("the sample could not be written");
}

int show() {
    scheduler::ScheduleList list;
    if (!readStoredSchedule(list))
        return fail("there is no schedule that can be read");
    std::fputs(scheduleTable(list, base::TimeValue::now()).c_str(), stdout);
    return Succeeded;
}

bool hasRun(const scheduler::ScheduledProject& entry) {
    return entry.lastRun != base::TimeValue() && !entry.running;
}

int waitForRuns(unsigned wanted, unsigned seconds) {
    const ULONGLONG end = GetTickCount64() + 1000ULL * seconds;
    for (;;) {
        scheduler::ScheduleList list;
        if (readStoredSchedule(list) &&
            std::ranges::count_if(list, hasRun) >= static_cast<std::ptrdiff_t>(wanted))
            return Succeeded;
        if (GetTickCount64() >= end)
            return fail("too few entries have run in that time");
        Sleep(pollInterval);
    }
}

} // namespace

std::optional<unsigned> parseNumber(std::string_view word) {
    unsigned number = 0;
    const char* const end = word.data() + word.size();
    const auto [rest, error] = std::from_chars(word.data(), end, number);
    return error == std::errc() && rest == end ? std::optional(number) : std::nullopt;
}

int runCommand(const std::vector<std::string>& words) {
    const bool demo = !words.empty() && words[0] == "demo";
    if ((words.size() == 2 || words.size() == 3) && (demo || words[0] == "sample") && !words[1].empty()) {
        const auto seconds = words.size() == 3 ? parseNumber(words[2]) : 8U;
        if (seconds)
            return makeSample(words[1], demo ? Sample::DueSoon : Sample::Whole, *seconds);
    }
    if (words.size() == 1 && words[0] == "show")
        return show();
    if (words.size() == 3 && words[0] == "wait") {
        const auto wanted = parseNumber(words[1]);
        const auto seconds = parseNumber(words[2]);
        if (wanted && seconds)
            return waitForRuns(*wanted, *seconds);
    }
    return usage();
}
