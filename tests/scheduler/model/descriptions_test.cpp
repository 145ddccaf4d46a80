#include "scheduler/model/descriptions.h"
#include "tests/scheduler/model/entries.h"
#include "tests/support/fakeclock.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

namespace {

using namespace test;
using base::TimeSpan;
using base::TimeValue;
using scheduler::ScheduledProject;

class Descriptions : public testing::Test {
protected:
    Descriptions() {
        for (const char* path : {"C:\\Sites\\first.kra", "C:\\Sites\\news.daily.kra", "run:cmd /c exit"})
            list.append(withPath(path));
    }

    std::string nextRun(const ScheduledProject& entry) const {
        return describeNextRun(entry, list, state, clock);
    }

    const TimeValue now = at(2026, 1, 5, 20, 0, 45); // a Monday
    scheduler::ScheduleList list;
    FakeClock clock{now};
    scheduler::EngineState state{.startupFlag = false, .suspended = false};
};

TEST_F(Descriptions, NameAProjectByItsTitleAndACommandLineInFull) {
    const struct {
        const char *path, *name;
    } rows[] = {{"C:\\Sites\\news.daily.kra", "news.daily"},
                {"news", "news"},
                {"C:/Sites/news.kra", "news"},
                {"C:\\Sites\\old/news.kra", "old/news"},
                {"C:\\Si.tes\\news", "news"},
                {"C:\\Sites\\", ""},
                {"run:\"C:\\x\\y.exe\" a.b", "run:\"C:\\x\\y.exe\" a.b"},
                {"RUN:C:\\x\\y.exe", "y"}};
    for (const auto& row : rows)
        EXPECT_EQ(displayName(withPath(row.path)), row.name) << row.path;
}

struct Schedule {
    ScheduledProject entry;
    const char* phrase;
};

TEST_F(Descriptions, SayWhenAnEntryRuns) {
    ScheduledProject otherFlags = daily(now, "MTWTFSS");
    otherFlags.weekdays.fill(255);
    const Schedule table[] = {
        {after(1), "when project news.daily is finished"},
        {after(1, 1), "1 minute after project news.daily is finished"},
        {after(1, 2), "2 minutes after project news.daily is finished"},
        {after(1, -1), "-1 minutes after project news.daily is finished"},
        {after(2), "when project run:cmd /c exit is finished"},
        {after(3), "when project (unknown) is finished"},
        {after(-1, 1), "1 minute after project (unknown) is finished"},
        {after(lowest, 2), "2 minutes after project (unknown) is finished"},
        {ofKind(1), "at startup"},
        {ofKind(1, 1), "1 minute after startup"},
        {ofKind(1, 2), "2 minutes after startup"},
        {ofKind(1, lowest), "-2147483648 minutes after startup"},
        {hourly(0), "hourly on the hour"},
        {hourly(1), "hourly at 1 minute after the hour"},
        {hourly(2), "hourly at 2 minutes after the hour"},
        {daily(now, "MTWTFSS"), "every day at 8:00 PM"},
        {otherFlags, "every day at 8:00 PM"},
        {daily(now, "M.W.F.."), "every Mon/Wed/Fri at 8:00 PM"},
        {daily(now, "MTWTFS."), "every Mon/Tue/Wed/Thu/Fri/Sat at 8:00 PM"},
        {daily(now, ".TWTFSS"), "every Tue/Wed/Thu/Fri/Sat/Sun at 8:00 PM"},
        {daily(now, "......."), "every  at 8:00 PM"},
        {daily(TimeValue(), "MTWTFSS"), "every day at "},
        {monthly(now, 1), "on day 1 of every month at 8:00 PM"},
        {monthly(now, -3), "on day -3 of every month at 8:00 PM"},
        {monthly(TimeValue(), 15), "on day 15 of every month at "},
        {once(now), "on 1/5/2026 at 8:00 PM"},
        {once(TimeValue()), "(unknown)"},
        {ofKind(scheduler::kindCount, 0, now), "on 1/5/2026 at 8:00 PM"},
        {ofKind(-1, 0, now), "on 1/5/2026 at 8:00 PM"},
        {ofKind(scheduler::kindCount), "(unknown)"},
    };
    for (const Schedule& row : table)
        EXPECT_EQ(describeSchedule(row.entry, list), row.phrase);
}

TEST_F(Descriptions, SayHowAnEntryRuns) {
    const struct {
        int command;
        std::int32_t minutes;
        const char* dialup;
        std::uint8_t disconnect;
        const char* phrase;
    } rows[] = {
        {0, 0, "", 0, "Run normally"},
        {1, 0, "", 0, "Run update only"},
        {2, 0, "", 0, "Relink files"},
        {3, 0, "", 0, "Run complete refresh"},
        {1, 90, "Office line", 1,
         "Run update only for up to 90 minutes via Office line; disconnect when done"},
        {0, 1, "", 0, "Run normally for up to 1 minute"},
        {0, 2, "", 0, "Run normally for up to 2 minutes"},
        {0, lowest, "", 0, "Run normally for up to -2147483648 minutes"},
        {0, 0, "100% s", 0, "Run normally via 100% s"},
        {0, 0, "", 7, "Run normally; disconnect when done"},
        {2, 90, "Office line", 1, "Relink files"},
        {4, 0, "", 0, ""},
        {-1, 0, "", 0, ""},
    };
    for (const auto& row : rows) {
        ScheduledProject entry;
        entry.runCommand = static_cast<scheduler::RunCommand>(row.command);
        entry.timeLimitMinutes = row.minutes;
        entry.dialupEntry = row.dialup;
        entry.disconnectWhenDone = row.disconnect;
        EXPECT_EQ(describeRun(entry), row.phrase);
    }
}

ScheduledProject due(TimeValue time, ScheduledProject entry) {
    entry.nextRun = time;
    return entry;
}

TEST_F(Descriptions, SayWhenTheNextRunIs) {
    constexpr TimeValue never = TimeValue::never();
    const TimeValue justBefore = now - TimeSpan::fromSeconds(1);
    const TimeValue justAfter = now + TimeSpan::fromSeconds(1);
    const Schedule table[] = {
        {due(never, after(1)), "waiting for news.daily"},
        {due(justAfter, after(1)), "waiting for news.daily"}, // even if its next run is set
        {due(now, after(1)), "Now"},
        {due(never, after(3)), "waiting for (unknown)"},
        {due(never, after(-1)), "waiting for (unknown)"},
        {due(never, ofKind(1)), "next startup"},
        {due(justAfter, ofKind(1)), "next startup"}, // a retry is pending
        {due(TimeValue(), ofKind(1)), "Now"},        // not started yet
        {due(never, once(justBefore)), "(never)"},
        {due(never, ofKind(scheduler::kindCount)), "(never)"},
        {due(at(2026, 1, 5, 20, 10), hourly(10)), "today at 8:10 PM"},
        {due(at(2026, 1, 6, 20), daily(now, "MTWTFSS")), "tomorrow at 8:00 PM"},
        {due(at(2026, 1, 25, 20), monthly(now, 25)), "Sun Jan 25 at 8:00 PM"},
        {due(justAfter, once(justAfter)), "today at 8:00 PM"},
        {due(now, hourly(0)), "Now"},
        {due(TimeValue(), daily(now, "MTWTFSS")), "Now"},
    };
    for (const Schedule& row : table)
        EXPECT_EQ(nextRun(row.entry), row.phrase) << "kind " << static_cast<int>(row.entry.kind);

    clock.advance(TimeSpan::fromSeconds(1));
    EXPECT_EQ(nextRun(due(justAfter, once(justAfter))), "Now") << "the clock moved on";
}

TEST_F(Descriptions, SayRunningBeforeDisabledBeforeSuspended) {
    for (unsigned bits = 0; bits < 8; ++bits)
        for (ScheduledProject entry : {due(TimeValue(), hourly(0)), due(TimeValue::never(), hourly(0))}) {
            const std::string otherwise = entry.nextRun == TimeValue() ? "Now" : "(never)";
            entry.running = bits & 1;
            entry.disabled = bits & 2;
            state.suspended = bits & 4;
            EXPECT_EQ(nextRun(entry), bits & 1   ? "Running"
                                      : bits & 2 ? "(disabled)"
                                      : bits & 4 ? "(suspended)"
                                                 : otherwise)
                << bits;
        }
}

TEST_F(Descriptions, SayWhenTheLastRunWas) {
    const struct {
        TimeValue lastRun;
        const char* phrase;
    } rows[] = {{TimeValue(), "Never"},
                {TimeValue::never(), "Never"},
                {now, "today at 8:00 PM"},
                {at(2026, 1, 4, 20, 1), "yesterday at 8:01 PM"},
                {at(2025, 12, 16, 7, 5), "Tue Dec 16, 2025 at 7:05 AM"}};
    ScheduledProject entry;
    for (const auto& row : rows) {
        entry.lastRun = row.lastRun;
        EXPECT_EQ(describeLastRun(entry, now), row.phrase);
        EXPECT_EQ(describeLastRun(entry, clock), row.phrase);
    }
    entry.lastRun = now;
    clock.set(at(2026, 1, 25));
    EXPECT_EQ(describeLastRun(entry, clock), "Mon Jan 05 at 8:00 PM");
}

// Zone offsets are multiples of 15 minutes, so local midnight falls on a quarter hour in UTC.
TEST_F(Descriptions, StayValidUntilTheReportedTime) {
    int changes = 0;
    int checks = 0;
    for (const std::int32_t daysAhead : {-400, -3, 0, 2, 364, 366}) {
        ScheduledProject entry = due(TimeValue(now.seconds() + daysAhead * 86400 + 4711), once(now));
        entry.lastRun = TimeValue(now.seconds() - 815);
        const auto phrasesAt = [&](TimeValue time) {
            clock.set(time);
            return nextRun(entry) + describeLastRun(entry, clock);
        };
        std::string before;
        const TimeValue end = now + TimeSpan::fromDays(5);
        for (TimeValue time = now, until; time < end; time = until) {
            until = scheduler::phrasesValidUntil(entry, time);
            ASSERT_GT(until, time);
            const std::string phrases = phrasesAt(time);
            ASSERT_EQ(phrasesAt(TimeValue(until.seconds() - 1)), phrases)
                << daysAhead << ' ' << time.seconds();
            changes += phrases != before;
            ++checks;
            before = phrases;
        }
    }
    EXPECT_GE(changes, 6 * 3 + 1 + 3) << "today, yesterday, earlier; now; tomorrow, today, now";
    EXPECT_LT(checks, 6 * 5 * (96 + 4 + 1)) << "at most one check per quarter of an hour, plus a few per day";
}

} // namespace
