// For tools/soak: compares the program's resources after many runs with those after the first minute.
//
// usage: program.soak MINUTES SPEED [windows]

#include "lib/base/registry.h"
#include "resources/ids.h"
#include "tests/program/listdriver.h"
#include "tests/program/scheduledriver.h"
#include "tests/program/settableclock.h"
#include "tests/program/spydriver.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <tlhelp32.h>

using scheduler::ScheduledProject;
using scheduler::ScheduleKind;

namespace {

constexpr int pairs = 4;
constexpr int busyMinutes = 1;

std::vector<ScheduledProject> busyEntries(const driver::SampleSpider& spider) {
    std::vector<ScheduledProject> entries(2 * pairs);
    for (std::size_t i = 0; i < entries.size(); ++i) {
        entries[i].path = spider.makeProject("pair " + std::to_string(i) + ".kra", "result=fine\n");
        entries[i].afterIndex = static_cast<std::int32_t>(i ^ 1);
    }
    for (int minute = 0; minute < 60; minute += 6) {
        ScheduledProject entry;
        entry.path = spider.makeProject("hourly " + std::to_string(minute) + ".krb", "error=7\n");
        entry.kind = ScheduleKind::Hourly;
        entry.minutes = minute;
        entry.retryLimit = 1;
        entry.retryIntervalMinutes = 1;
        entries.push_back(entry);
    }
    return entries;
}

unsigned long handlesOf(HANDLE process) {
    unsigned long count = 0;
    for (std::uintptr_t value = 4; value < 0x1800; value += 4) {
        HANDLE copy = nullptr;
        if (DuplicateHandle(process, reinterpret_cast<HANDLE>(value), GetCurrentProcess(), &copy, 0, FALSE,
                            DUPLICATE_SAME_ACCESS)) {
            ++count;
            CloseHandle(copy);
        }
    }
    return count;
}

unsigned long threadsOf(DWORD process) {
    const base::FileHandle snapshot(CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0));
    unsigned long count = 0;
    THREADENTRY32 thread{};
    thread.dwSize = sizeof(thread);
    for (BOOL more = Thread32First(snapshot.get(), &thread); more;
         more = Thread32Next(snapshot.get(), &thread))
        count += thread.th32OwnerProcessID == process;
    return count;
}

unsigned long privateKilobytes(HANDLE process) {
    std::size_t total = 0;
    MEMORY_BASIC_INFORMATION region{};
    for (std::uintptr_t at = 0;
         VirtualQueryEx(process, reinterpret_cast<void*>(at), &region, sizeof(region)) != 0;) {
        if (region.State == MEM_COMMIT && region.Type == MEM_PRIVATE)
            total += region.RegionSize;
        const std::uintptr_t next = reinterpret_cast<std::uintptr_t>(region.BaseAddress) + region.RegionSize;
        if (next <= at)
            break;
        at = next;
    }
    return static_cast<unsigned long>(total / 1024);
}

/// Sets the clock forward in steps, because Wine does not start reliably with tools/wine --speed.
class FastClock {
public:
    explicit FastClock(int speed) : speed_(speed) {}

    void pass(int milliseconds) {
        for (int slept = 0; slept < milliseconds; slept += step) {
            Sleep(step);
            clock_.moveBy((speed_ - 1) * step / 1000);
        }
    }

private:
    static constexpr int step = 1000;
    driver::SettableClock clock_;
    int speed_;
};

using Sample = std::array<unsigned long, 5>;

/// The minimum of several samples, because a run holds a thread and some handles for a while.
Sample leastSample(HWND window, const driver::SpyDriver& spy) {
    DWORD id = 0;
    GetWindowThreadProcessId(window, &id);
    const base::KernelHandle process(OpenProcess(PROCESS_ALL_ACCESS, FALSE, id));
    Sample least;
    least.fill(~0ul);
    for (int sample = 0; sample < 15; ++sample) {
        spy.fillContexts();
        spy.count();
        const Sample seen = {spy.userObjects(), spy.gdiObjects(), handlesOf(process.get()), threadsOf(id),
                             privateKilobytes(process.get())};
        std::ranges::transform(least, seen, least.begin(), [](auto a, auto b) { return std::min(a, b); });
        Sleep(100);
    }
    return least;
}

/// If `slowly`, also draws each dialog completely, which fills the platform's cache of drawn control parts.
void useWindows(const driver::SchedulerProcess& scheduler, const driver::ListDriver& list,
                const driver::SpyDriver& spy, std::size_t round, bool slowly) {
    for (const int dialog : {IDM_ABOUT, IDM_PREFERENCES, IDM_ADD}) {
        scheduler.command(dialog);
        driver::waitUntil([&] { return !scheduler.dialogs().empty(); }, std::chrono::hours(1));
        if (slowly) {
            spy.passTicks(2);
            std::ranges::for_each(scheduler.dialogs(), driver::SpyDriver::draw);
        }
        for (const HWND open : scheduler.dialogs())
            driver::SchedulerProcess::press(open, IDCANCEL);
        driver::waitUntil([&] { return scheduler.dialogs().empty(); }, std::chrono::hours(1));
    }
    list.clickHeader(static_cast<int>(round % driver::columns));
    scheduler.command(IDM_CLOSE);
    scheduler.command(IDM_DISPLAY);
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 3)
        return 2;
    const int minutes = std::atoi(argv[1]);
    const int speed = std::atoi(argv[2]);
    const bool usesWindows = argc > 3;
    const driver::SampleSpider spider;
    base::writeNumber(HKEY_CURRENT_USER, "Software\\Brindlewood\\scheduler\\State\\RunMultiple", 1);
    driver::saveEntries(busyEntries(spider));
    driver::SchedulerProcess scheduler;
    if (!scheduler.start())
        return 1;
    const driver::ListDriver list(scheduler.window());
    const driver::SpyDriver spy(scheduler.window());
    spy.settleHeaps();
    spy.freeTexts();
    list.selectAll();

    FastClock clock(speed);
    const ULONGLONG begin = GetTickCount64();
    const auto work = [&](int until) {
        std::size_t round = 0;
        for (; GetTickCount64() - begin < static_cast<ULONGLONG>(until) * 60000; ++round) {
            // A heap keeps the memory that its busiest moment needed: the first minute is the busiest.
            if (until == busyMinutes)
                scheduler.command(IDM_RUN);
            if (usesWindows)
                useWindows(scheduler, list, spy, round, until == busyMinutes);
            clock.pass(1000);
        }
        return round;
    };
    work(busyMinutes);
    const Sample first = leastSample(scheduler.window(), spy);
    const std::size_t runsBefore = spider.logged("end run");
    const std::size_t rounds = work(minutes);
    const Sample last = leastSample(scheduler.window(), spy);
    const std::size_t runs = spider.logged("end run");

    constexpr std::array names = {"windows and menus", "graphics objects", "kernel handles", "threads",
                                  "private KB"};
    // A heap may grow by one more step. A leak in each of thousands of runs would exceed these limits.
    constexpr std::array<unsigned long, 5> allowed = {0, 0, 2, 0, 128};
    bool same = scheduler.isRunning() && runs > runsBefore + rounds;
    if (spy.freedTexts() > 0)
        std::printf("the test freed the blocks that the platform leaked for %ld text controls\n",
                    spy.freedTexts());
    std::printf("%zu runs in %d minutes at %d-fold speed\n%-18s %12s %12s\n", runs, minutes, speed, "",
                "first minute", "end");
    for (std::size_t i = 0; i < names.size(); ++i) {
        std::printf("%-18s %12lu %12lu\n", names[i], first[i], last[i]);
        same = same && last[i] <= first[i] + allowed[i];
    }
    std::printf("%s\n", same ? "no leaks" : "LEAK: the program uses more than after the first minute");
    return same ? 0 : 1;
}
