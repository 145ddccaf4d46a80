#include "scheduler/model/nextrun.h"
#include "tests/scheduler/model/entries.h"
#include "tests/support/fakeclock.h"
#include "tests/support/instants.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

namespace {

using namespace test;
using base::TimeSpan;
using base::TimeValue;
using scheduler::ScheduledProject;

TimeValue nextRun(const ScheduledProject& entry, TimeValue now, TimeValue clockNow, bool startup = false) {
    return computeNextRun({.startupFlag = startup}, entry, now, FakeClock(clockNow));
}

struct Row {
    const char* what;
    ScheduledProject entry;
    TimeValue now;
    TimeValue expected;
};

void expectAll(const std::vector<Row>& table) {
    for (const Row& row : table)
        EXPECT_EQ(nextRun(row.entry, row.now, row.now), row.expected) << row.what;
}

// Hourly, daily and monthly rows span no clock change of a tested zone.

TEST(NextRun, OnlyStartupEntriesAreDueAtOnceWhileTheFlagIsSet) {
    const TimeValue now = at(2026, 1, 5, 10, 15);
    EXPECT_FALSE(scheduler::EngineState().startupFlag || scheduler::EngineState().suspended);
    for (const int kind : {-1, 0, 1, scheduler::kindCount, 1000, int{lowest}, int{highest}})
        for (const std::int32_t minutes : {0, 1, 90, lowest, highest}) {
            const ScheduledProject entry = ofKind(kind, minutes);
            EXPECT_EQ(nextRun(entry, now, now, true), kind == 1 ? TimeValue() : TimeValue::never()) << kind;
            EXPECT_EQ(nextRun(entry, now, now, false), TimeValue::never()) << kind;
        }
    for (const ScheduledProject& entry :
         {hourly(20), daily(clockTime(8), "1111111"), monthly(clockTime(8), 3), once(at(2027, 1, 1))})
        EXPECT_EQ(nextRun(entry, now, now, true), nextRun(entry, now, now, false));
}

TEST(NextRun, HourlyEntryAdvancesAtTheStartOfItsMinute) {
    expectAll({
        {"at the minute", hourly(15), at(2026, 1, 5, 10, 15), at(2026, 1, 5, 11, 15)},
        {"within the minute", hourly(15), at(2026, 1, 5, 10, 15, 59), at(2026, 1, 5, 11, 15)},
        {"the second before", hourly(15), at(2026, 1, 5, 10, 14, 59), at(2026, 1, 5, 10, 15)},
        {"on the hour", hourly(0), at(2026, 1, 5, 10), at(2026, 1, 5, 11)},
        {"over a year's end", hourly(0), at(2025, 12, 31, 23, 59, 59), at(2026, 1, 1)},
        {"into a leap day", hourly(5), at(2024, 2, 28, 23, 5), at(2024, 2, 29, 0, 5)},
        {"more minutes than an hour has", hourly(90), at(2026, 1, 5, 10, 15), at(2026, 1, 5, 11, 30)},
        {"a negative minute", hourly(-1), at(2026, 1, 5, 10, 0), at(2026, 1, 5, 10, 59)},
    });
}

TEST(NextRun, DailyEntryRunsAtItsTimeOnTheNextSelectedDay) {
    const std::string everyDay = "MTWTFSS";
    ScheduledProject oddFlag = daily(clockTime(8), ".......");
    oddFlag.weekdays[3] = 128;
    const ScheduledProject mondays = daily(clockTime(8), "M......");
    // 5 January 2026 is a Monday.
    expectAll({
        {"exactly then", mondays, at(2026, 1, 5, 8), at(2026, 1, 5, 8)},
        {"a second later", mondays, at(2026, 1, 5, 8, 0, 1), at(2026, 1, 12, 8)},
        {"a second earlier", mondays, at(2026, 1, 5, 7, 59, 59), at(2026, 1, 5, 8)},
        {"no day", daily(clockTime(8), "......."), at(2026, 1, 5, 7), at(2026, 1, 12, 8)},
        {"no day, time passed", daily(clockTime(8), "......."), at(2026, 1, 5, 9), at(2026, 1, 13, 8)},
        {"later today", daily(clockTime(20, 30, 15), everyDay), at(2026, 1, 5, 8),
         at(2026, 1, 5, 20, 30, 15)},
        {"Tuesday", daily(clockTime(8), ".T....."), at(2026, 1, 5, 8), at(2026, 1, 6, 8)},
        {"Wednesday", daily(clockTime(8), "..W...."), at(2026, 1, 5, 8), at(2026, 1, 7, 8)},
        {"Thursday", daily(clockTime(8), "...T..."), at(2026, 1, 5, 8), at(2026, 1, 8, 8)},
        {"Friday", daily(clockTime(8), "....F.."), at(2026, 1, 5, 8), at(2026, 1, 9, 8)},
        {"Saturday", daily(clockTime(8), ".....S."), at(2026, 1, 5, 8), at(2026, 1, 10, 8)},
        {"Sunday", daily(clockTime(8), "......S"), at(2026, 1, 5, 8), at(2026, 1, 11, 8)},
        {"from a leap day", daily(clockTime(8), everyDay), at(2024, 2, 29, 9), at(2024, 3, 1, 8)},
        {"any flag but 0 is set", oddFlag, at(2026, 1, 5, 9), at(2026, 1, 8, 8)},
        {"a negative time is midnight", daily(TimeValue(-1), everyDay), at(2026, 1, 5, 8), at(2026, 1, 6)},
    });
}

TEST(NextRun, DailyStartsFromTheClocksDayAndComparesWithNow) {
    const ScheduledProject entry = daily(clockTime(2), "MTWTFSS");
    EXPECT_EQ(nextRun(entry, at(2026, 1, 5, 1), at(2026, 1, 6, 1)), at(2026, 1, 6, 2))
        << "clock one day ahead";
    EXPECT_EQ(nextRun(entry, at(2026, 1, 5, 23, 59, 59), at(2026, 1, 6)), at(2026, 1, 6, 2))
        << "across midnight";
    EXPECT_EQ(nextRun(entry, at(2026, 1, 6, 3), at(2026, 1, 6, 1)), at(2026, 1, 7, 2)) << "clock behind";
    EXPECT_EQ(nextRun(entry, at(2026, 1, 9, 3), at(2026, 1, 5, 1)), at(2026, 1, 6, 2))
        << "adds only one day even if now is far ahead";
}

TEST(NextRun, MonthlyEntryCountsDaysFromTheFirstEvenBeyondTheMonth) {
    expectAll({
        {"exactly then", monthly(clockTime(12), 15), at(2026, 1, 15, 12), at(2026, 1, 15, 12)},
        {"a second later", monthly(clockTime(12), 15), at(2025, 12, 15, 12, 0, 1), at(2026, 1, 15, 12)},
        {"day 31 of May", monthly(clockTime(7, 30), 31), at(2026, 5, 2), at(2026, 5, 31, 7, 30)},
        {"day 31 of June is 1 July", monthly(clockTime(7, 30), 31), at(2026, 6, 5), at(2026, 7, 1, 7, 30)},
        {"on 1 July, after that", monthly(clockTime(7, 30), 31), at(2026, 7, 1, 8), at(2026, 7, 31, 7, 30)},
        {"day 30 of February is 2 March", monthly(clockTime(7), 30), at(2026, 2, 3), at(2026, 3, 2, 7)},
        {"or 1 March in a leap year", monthly(clockTime(7), 30), at(2024, 2, 3), at(2024, 3, 1, 7)},
        {"day 0 is day 1", monthly(clockTime(7), 0), at(2026, 1, 1), at(2026, 1, 1, 7)},
        {"the lowest day is day 1", monthly(clockTime(7), lowest), at(2026, 1, 1), at(2026, 1, 1, 7)},
        {"a negative time is midnight", monthly(TimeValue(lowest), 3), at(2026, 1, 1), at(2026, 1, 3)},
    });
}

TEST(NextRun, MonthlyDay31ComputedOn5AprilIs1May) {
    const TimeValue thirtyDaysOn = at(2026, 4, 1) + TimeSpan::fromDays(30) + TimeSpan::fromMinutes(450);
    const TimeValue now = at(2026, 4, 5, 12);
    const TimeValue result = nextRun(monthly(clockTime(7, 30), 31), now, now);
    EXPECT_EQ(result, thirtyDaysOn);
    // In the southern hemisphere the clock changes in April, so the result is an hour off.
    if (at(2026, 4, 1) + TimeSpan::fromDays(30) == at(2026, 5, 1)) {
        EXPECT_EQ(result, at(2026, 5, 1, 7, 30));
    }
}

TEST(NextRun, MonthlyTakesTheMonthFromTheClockAndComparesWithNow) {
    const ScheduledProject entry = monthly(clockTime(7), 10);
    EXPECT_EQ(nextRun(entry, at(2025, 12, 31, 23, 59, 59), at(2026, 1, 1)), at(2026, 1, 10, 7))
        << "across the end of the year";
    EXPECT_EQ(nextRun(entry, at(2025, 11, 5), at(2026, 1, 20)), at(2026, 1, 10, 7))
        << "later than now but earlier than the clock";
    EXPECT_EQ(nextRun(entry, at(2026, 7, 1), at(2026, 1, 20)), at(2026, 2, 10, 7))
        << "the month after the clock's even if now is far ahead";
}

TEST(NextRun, OnceIsNeverAtOrAfterItsTime) {
    const TimeValue time = at(2026, 1, 5, 8, 0, 30);
    expectAll({
        {"a second before", once(time), time - TimeSpan::fromSeconds(1), time},
        {"exactly then", once(time), time, TimeValue::never()},
        {"a second later", once(time), time + TimeSpan::fromSeconds(1), TimeValue::never()},
        {"long before", once(time), TimeValue(1), time},
        {"no time", once(TimeValue()), at(2026, 1, 5), TimeValue::never()},
        {"the last second there is", once(TimeValue::never()), at(2026, 1, 5), TimeValue::never()},
    });
}

TEST(NextRun, OnceAndHourlyDoNotReadTheClock) {
    const TimeValue now = at(2026, 1, 5, 8);
    const TimeValue elsewhere = at(2030, 6, 7, 12, 34);
    EXPECT_EQ(nextRun(once(at(2026, 1, 6)), now, elsewhere), at(2026, 1, 6));
    EXPECT_EQ(nextRun(hourly(20), now, elsewhere), at(2026, 1, 5, 8, 20));
}

TEST(NextRun, DaysHoursAndMonthsStartInLocalTime) {
    const TimeValue leapDay = at(2024, 2, 29, 23, 59, 59);
    EXPECT_EQ(scheduler::timeOfDay(leapDay).seconds(), 86399);
    EXPECT_EQ(scheduler::timeOfDay(at(2026, 1, 5)).seconds(), 0);
    EXPECT_EQ(scheduler::timeOfDay(at(2026, 7, 5, 13, 14, 15)).seconds(), 15 + (13 * 60 + 14) * 60);
    EXPECT_EQ(scheduler::localMidnight(leapDay), at(2024, 2, 29));
    EXPECT_EQ(scheduler::localMidnight(at(2026, 1, 5)), at(2026, 1, 5));
    EXPECT_EQ(scheduler::hourStart(leapDay), at(2024, 2, 29, 23));
    EXPECT_EQ(scheduler::hourStart(at(2026, 1, 5, 23)), at(2026, 1, 5, 23));
    for (const std::int32_t t : {-1, -3600, -86399, lowest})
        EXPECT_EQ(scheduler::timeOfDay(TimeValue(t)).seconds(), 0) << t;
    for (int month = 1; month <= 12; ++month)
        for (const TimeValue now : {at(2025, month, 28, 23, 59, 59), at(2025, month, 1)}) {
            EXPECT_EQ(scheduler::monthStart(FakeClock(now)), at(2025, month, 1)) << month;
            EXPECT_EQ(scheduler::nextMonthStart(FakeClock(now)),
                      month == 12 ? at(2026, 1, 1) : at(2025, month + 1, 1))
                << month;
        }
}

std::vector<TimeValue> noonsBeforeChanges(bool back) {
    std::vector<TimeValue> noons;
    for (const std::int32_t change : clockChanges())
        if ((localFields(change).tm_isdst > 0) == back) {
            const std::tm date = localFields(change - 86400);
            noons.push_back(at(date.tm_year + 1900, date.tm_mon + 1, date.tm_mday, 12));
        }
    EXPECT_EQ(noons.size(), 3U) << "this zone must change its clock";
    return noons;
}

TEST(ClockChange, DailyEntryAdvances86400SecondsAndRunsEarlyOrLate) {
    for (const bool back : {true, false})
        for (const TimeValue noon : noonsBeforeChanges(back)) {
            const TimeValue result = nextRun(daily(clockTime(8), "MTWTFSS"), noon, noon);
            EXPECT_EQ(secondsBetween(result, noon), 20 * 3600);
            EXPECT_EQ(plain::clockTimeOf(result.seconds()), (back ? 7 : 9) * 3600);
        }
}

TEST(ClockChange, EntryAfterMidnightIsDueAgainUntilTheEndOfA25HourDay) {
    for (const TimeValue noon : noonsBeforeChanges(true)) {
        const TimeValue midnight = noon + TimeSpan::fromMinutes(12 * 60);
        const TimeValue now = midnight + TimeSpan::fromMinutes(24 * 60 + 55);
        // The day has more than 86,400 seconds, but the rule adds 86,400 once.
        EXPECT_EQ(nextRun(daily(clockTime(0, 10), "MTWTFSS"), now, now),
                  midnight + TimeSpan::fromMinutes(24 * 60 + 10));
    }
}

} // namespace
