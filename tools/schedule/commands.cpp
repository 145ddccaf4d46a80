#include "tools/schedule/commands.h"

#include "scheduler/model/schedulefile.h"
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
               "                                  write sample projects into DIR and replace the schedule\n"
               "                                  by entries of every kind, the first two due in\n"
               "                                  SECONDS (default: 8)\n"
               "       schedule demo DIR [SECONDS]\n"
               "                                  the same with only the first three entries\n"
               "       schedule show              print the schedule\n"
               "       schedule wait N SECONDS    wait until N entries have run, for at most SECONDS\n",
               stderr);
    return Misused;
}

int fail(const std::string& message) {
    std::fprintf(stderr, "schedule: %s\n", message.c_str());
    return Failed;
}

/// A running scheduler would overwrite the new file. A suspended scheduler has another title.
bool schedulerIsRunning() {
    return FindWindowA(nullptr, scheduler::titleFor(false).c_str()) ||
           FindWindowA(nullptr, scheduler::titleFor(true).c_str());
}

int makeSample(const std::string& folder, Sample sample, unsigned seconds) {
    if (schedulerIsRunning())
        return fail("the schedule was not replaced, because the scheduler is running: exit it first");
    return writeSample(folder, sample, seconds)
               ? Succeeded
               : fail("cannot write sample projects into " + folder + ", or " + scheduler::schedulePath());
}

int show() {
    scheduler::ScheduleList list;
    if (!readStoredSchedule(list))
        return fail("cannot read " + scheduler::schedulePath());
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
            return fail("too few entries have run within the time limit");
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
