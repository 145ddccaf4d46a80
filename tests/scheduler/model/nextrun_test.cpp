#include "scheduler/model/nextrun.h"
#include "tests/support/fakeclock.h"
#include "tests/support/instants.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <ctime>
#include <limits>
#include <random>
#include <string>
#include <vector>

namespace {

using base::TimeSpan;
using base::TimeValue;
using scheduler::computeNextRun;
using scheduler::EngineState;
using scheduler::ScheduledProject;
using scheduler::ScheduleKind;

constexpr std::int32_t lowest = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t highest = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t day = 86400;

// The rules told once more with the runtime's calendar alone

constexpr std::int32_t wrapped(std::int64_t seconds) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(seconds));
}

std::int32_t made(int year, int month, int dayOfMonth, int hour, int minute = 0, int second = 0) {
    std::tm fields{};
    fields.tm_year = year - 1900;
    fields.tm_mon = month - 1;
    fields.tm_mday = dayOfMonth;
    fields.tm_hour = hour;
    fields.tm_min = minute;
    fields.tm_sec = second;
    fields.tm_isdst = -1;
    const std::int64_t t = std::mktime(&fields);
    return t == -1 || t < lowest || t > highest ? 0 : static_cast<std::int32_t>(t);
}

/// A negative time has no fields.
std::tm fieldsOf(std::int32_t t) {
    std::tm none{};
    none.tm_year = -1900;
    none.tm_mon = -1;
    return t < 0 ? none : test::localFields(t);
}

std::int32_t clockTimeOf(std::int32_t t) {
    const std::tm fields = fieldsOf(t);
    return fields.tm_sec + (fields.tm_hour * 60 + fields.tm_min) * 60;
}

std::int32_t plainHourly(const ScheduledProject& entry, std::int32_t now) {
    const std::tm fields = fieldsOf(now);
    const std::int32_t hour = made(fields.tm_year + 1900, fields.tm_mon + 1, fields.tm_mday, fields.tm_hour);
    return wrapped(hour + std::int64_t{entry.minutes} * 60 + (fields.tm_min >= entry.minutes ? 3600 : 0));
}

std::int32_t plainDaily(const ScheduledProject& entry, std::int32_t now, std::int32_t clock) {
    const std::tm today = fieldsOf(clock);
    std::int32_t candidate =
        wrapped(std::int64_t{made(today.tm_year + 1900, today.tm_mon + 1, today.tm_mday, 0)} +
                clockTimeOf(entry.time.seconds()));
    if (candidate < now)
        candidate = wrapped(std::int64_t{candidate} + day);
    for (int added = 0; added < 7; ++added) {
        const int weekday = fieldsOf(candidate).tm_wday; // Sunday is 0
        const std::size_t flag = weekday == 0 ? 6 : static_cast<std::size_t>(weekday) - 1;
        if (entry.weekdays[flag])
            break;
        candidate = wrapped(std::int64_t{candidate} + day);
    }
    return candidate;
}

std::int32_t plainMonthly(const ScheduledProject& entry, std::int32_t now, std::int32_t clock) {
    const std::tm today = fieldsOf(clock);
    const int year = today.tm_year + 1900;
    const int month = today.tm_mon + 1;
    const std::int64_t days = std::clamp<std::int64_t>(std::int64_t{entry.dayOfMonth} - 1, 0, 25000);
    const std::int64_t offset = days * day + clockTimeOf(entry.time.seconds());
    const std::int32_t inThisMonth = wrapped(made(year, month, 1, 0) + offset);
    if (inThisMonth >= now)
        return inThisMonth;
    const std::int32_t next = month == 12 ? made(year + 1, 1, 1, 0) : made(year, month + 1, 1, 0);
    return wrapped(next + offset);
}

std::int32_t plainNextRun(const ScheduledProject& entry, std::int32_t now, std::int32_t clock, bool startup) {
    switch (static_cast<int>(entry.kind)) {
    case 1:
        return startup ? 0 : highest;
    case 2:
        return plainHourly(entry, now);
    case 3:
        return plainDaily(entry, now, clock);
    case 4:
        return plainMonthly(entry, now, clock);
    case 5:
        return now < entry.time.seconds() ? entry.time.seconds() : highest;
    default:
        return highest;
    }
}

// Entries

ScheduledProject hourly(std::int32_t minutes) {
    ScheduledProject entry;
    entry.kind = ScheduleKind::Hourly;
    entry.minutes = minutes;
    return entry;
}

/// `days` has a mark for each day from Monday to Sunday: a point for a day without a run.
ScheduledProject daily(TimeValue time, const std::string& days) {
    ScheduledProject entry;
    entry.kind = ScheduleKind::Daily;
    entry.time = time;
    for (std::size_t i = 0; i < entry.weekdays.size(); ++i)
        entry.weekdays[i] = days[i] != '.';
    return entry;
}

ScheduledProject monthly(TimeValue time, std::int32_t dayOfMonth) {
    ScheduledProject entry;
    entry.kind = ScheduleKind::Monthly;
    entry.time = time;
    entry.dayOfMonth = dayOfMonth;
    return entry;
}

ScheduledProject once(TimeValue time) {
    ScheduledProject entry;
    entry.kind = ScheduleKind::Once;
    entry.time = time;
    return entry;
}

ScheduledProject ofKind(int kind) {
    ScheduledProject entry;
    entry.kind = static_cast<ScheduleKind>(kind);
    return entry;
}

TimeValue at(int year, int month, int dayOfMonth, int hour = 0, int minute = 0, int second = 0) {
    return TimeValue(made(year, month, dayOfMonth, hour, minute, second));
}

/// Some day's time: only the time of day may count.
TimeValue clockTime(int hour, int minute = 0, int second = 0) {
    return at(2003, 1, 15, hour, minute, second);
}

TimeValue seconds(std::int32_t t) {
    return TimeValue(t);
}

TimeValue nextRun(const ScheduledProject& entry, TimeValue now, TimeValue clockNow, bool startup = false) {
    const test::FakeClock clock(clockNow);
    return computeNextRun({.startupFlag = startup, .suspended = false, .clock = &clock}, entry, now);
}

TimeValue nextRun(const ScheduledProject& entry, TimeValue now) {
    return nextRun(entry, now, now);
}

std::string text(TimeValue t) {
    if (t.seconds() < 0)
        return std::to_string(t.seconds());
    const std::tm fields = test::localFields(t.seconds());
    char line[64] = {};
    std::strftime(line, sizeof line, "%a %Y-%m-%d %H:%M:%S", &fields);
    return line + (" (" + std::to_string(t.seconds()) + ")");
}

struct Row {
    const char* what;
    ScheduledProject entry;
    TimeValue now;
    TimeValue expected;
};

void expectAll(const std::vector<Row>& table) {
    for (const Row& row : table) {
        const TimeValue result = nextRun(row.entry, row.now);
        EXPECT_EQ(result, row.expected)
            << row.what << ": " << text(result) << " instead of " << text(row.expected);
    }
}

// The calendar days in these tables are in months in which none of the zones in use changes its clock.

// Started by events

TEST(NextRun, AfterAnotherProjectIsNever) {
    for (const std::int32_t minutes : {0, 1, 90, lowest, highest}) {
        ScheduledProject entry = ofKind(0);
        entry.minutes = minutes;
        EXPECT_EQ(nextRun(entry, at(2026, 1, 5), at(2026, 1, 5), true), TimeValue::never());
        EXPECT_EQ(nextRun(entry, at(2026, 1, 5)), TimeValue::never());
    }
}

TEST(NextRun, AtStartupIsAtOnceWhileTheFlagIsSetWhateverTheDelay) {
    for (const std::int32_t minutes : {0, 1, 90, lowest, highest}) {
        ScheduledProject entry = ofKind(1);
        entry.minutes = minutes;
        EXPECT_EQ(nextRun(entry, at(2026, 1, 5), at(2026, 1, 5), true), TimeValue());
        EXPECT_EQ(nextRun(entry, at(2026, 1, 5), at(2026, 1, 5), false), TimeValue::never());
    }
}

TEST(NextRun, TheStartupFlagIsForEntriesAtStartupOnly) {
    const TimeValue now = at(2026, 1, 5, 10, 15);
    for (const ScheduledProject& entry :
         {hourly(20), daily(clockTime(8), "1111111"), monthly(clockTime(8), 3), once(at(2027, 1, 1))})
        EXPECT_EQ(nextRun(entry, now, now, true), nextRun(entry, now, now, false));
}

TEST(NextRun, AnyOtherKindIsNever) {
    for (const int kind : {-1, 6, 7, 1000, int{lowest}, int{highest}})
        EXPECT_EQ(nextRun(ofKind(kind), at(2026, 1, 5), at(2026, 1, 5), true), TimeValue::never()) << kind;
}

// Hourly

TEST(NextRun, Hourly) {
    expectAll({
        {"at the very minute it moves on", hourly(15), at(2026, 1, 5, 10, 15), at(2026, 1, 5, 11, 15)},
        {"a minute before", hourly(16), at(2026, 1, 5, 10, 15), at(2026, 1, 5, 10, 16)},
        {"within the minute", hourly(15), at(2026, 1, 5, 10, 15, 59), at(2026, 1, 5, 11, 15)},
        {"the second before", hourly(15), at(2026, 1, 5, 10, 14, 59), at(2026, 1, 5, 10, 15)},
        {"later in the hour", hourly(15), at(2026, 1, 5, 10, 59, 59), at(2026, 1, 5, 11, 15)},
        {"on the hour, at the hour", hourly(0), at(2026, 1, 5, 10), at(2026, 1, 5, 11)},
        {"on the hour, before the hour", hourly(0), at(2026, 1, 5, 9, 59, 59), at(2026, 1, 5, 10)},
        {"minute 59", hourly(59), at(2026, 1, 5, 10, 58, 59), at(2026, 1, 5, 10, 59)},
        {"at minute 59", hourly(59), at(2026, 1, 5, 10, 59), at(2026, 1, 5, 11, 59)},
        {"over midnight", hourly(15), at(2026, 1, 5, 23, 30), at(2026, 1, 6, 0, 15)},
        {"over a year's end", hourly(0), at(2025, 12, 31, 23, 59, 59), at(2026, 1, 1)},
        {"into a leap day", hourly(5), at(2024, 2, 28, 23, 5), at(2024, 2, 29, 0, 5)},
        {"more minutes than an hour has", hourly(90), at(2026, 1, 5, 10, 15), at(2026, 1, 5, 11, 30)},
        {"a minute that no hour reaches", hourly(60), at(2026, 1, 5, 10, 59), at(2026, 1, 5, 11)},
        {"a negative minute", hourly(-1), at(2026, 1, 5, 10, 0), at(2026, 1, 5, 10, 59)},
    });
}

// Daily

TEST(NextRun, Daily) {
    const std::string everyDay = "MTWTFSS";
    // 5 January 2026 is a Monday.
    expectAll({
        {"Monday 08:00, now exactly then: due at once", daily(clockTime(8), "M......"), at(2026, 1, 5, 8),
         at(2026, 1, 5, 8)},
        {"Monday 08:00, a second later", daily(clockTime(8), "M......"), at(2026, 1, 5, 8, 0, 1),
         at(2026, 1, 12, 8)},
        {"Monday 08:00, a second earlier", daily(clockTime(8), "M......"), at(2026, 1, 5, 7, 59, 59),
         at(2026, 1, 5, 8)},
        {"no day: the first candidate and a week", daily(clockTime(8), "......."), at(2026, 1, 5, 7),
         at(2026, 1, 12, 8)},
        {"no day, today's time gone by", daily(clockTime(8), "......."), at(2026, 1, 5, 9),
         at(2026, 1, 13, 8)},
        {"every day, later today", daily(clockTime(20, 30, 15), everyDay), at(2026, 1, 5, 8),
         at(2026, 1, 5, 20, 30, 15)},
        {"every day, gone by today", daily(clockTime(8), everyDay), at(2026, 1, 5, 20), at(2026, 1, 6, 8)},
        {"Tuesday", daily(clockTime(8), ".T....."), at(2026, 1, 5, 8), at(2026, 1, 6, 8)},
        {"Wednesday", daily(clockTime(8), "..W...."), at(2026, 1, 5, 8), at(2026, 1, 7, 8)},
        {"Thursday", daily(clockTime(8), "...T..."), at(2026, 1, 5, 8), at(2026, 1, 8, 8)},
        {"Friday", daily(clockTime(8), "....F.."), at(2026, 1, 5, 8), at(2026, 1, 9, 8)},
        {"Saturday", daily(clockTime(8), ".....S."), at(2026, 1, 5, 8), at(2026, 1, 10, 8)},
        {"Sunday", daily(clockTime(8), "......S"), at(2026, 1, 5, 8), at(2026, 1, 11, 8)},
        {"Sunday and Monday, on Sunday", daily(clockTime(8), "M.....S"), at(2026, 1, 11, 9),
         at(2026, 1, 12, 8)},
        {"midnight, at midnight", daily(clockTime(0), everyDay), at(2026, 1, 6), at(2026, 1, 6)},
        {"midnight, a second later", daily(clockTime(0), everyDay), at(2026, 1, 6, 0, 0, 1), at(2026, 1, 7)},
        {"the day's last second", daily(clockTime(23, 59, 59), everyDay), at(2026, 1, 6, 23, 59, 59),
         at(2026, 1, 6, 23, 59, 59)},
        {"over a month's end", daily(clockTime(8), everyDay), at(2026, 1, 31, 9), at(2026, 2, 1, 8)},
        {"over a leap day", daily(clockTime(8), everyDay), at(2024, 2, 28, 9), at(2024, 2, 29, 8)},
        {"from a leap day", daily(clockTime(8), everyDay), at(2024, 2, 29, 9), at(2024, 3, 1, 8)},
        {"over a year's end", daily(clockTime(8), everyDay), at(2025, 12, 31, 9), at(2026, 1, 1, 8)},
        {"a negative time is midnight", daily(TimeValue(-1), everyDay), at(2026, 1, 5, 8), at(2026, 1, 6)},
    });
}

TEST(NextRun, DailyAnyFlagThatIsNotZeroCounts) {
    ScheduledProject entry = daily(clockTime(8), ".......");
    entry.weekdays[3] = 128;
    EXPECT_EQ(nextRun(entry, at(2026, 1, 5, 9)), at(2026, 1, 8, 8));
}

TEST(NextRun, DailyBeginsWithTheClocksDayAndComparesWithNow) {
    const ScheduledProject entry = daily(clockTime(2), "MTWTFSS");
    EXPECT_EQ(nextRun(entry, at(2026, 1, 5, 1), at(2026, 1, 6, 1)), at(2026, 1, 6, 2)) << "clock a day ahead";
    EXPECT_EQ(nextRun(entry, at(2026, 1, 5, 23, 59, 59), at(2026, 1, 6)), at(2026, 1, 6, 2))
        << "over midnight";
    EXPECT_EQ(nextRun(entry, at(2026, 1, 6, 3), at(2026, 1, 6, 1)), at(2026, 1, 7, 2)) << "clock behind";
    EXPECT_EQ(nextRun(entry, at(2026, 1, 9, 3), at(2026, 1, 5, 1)), at(2026, 1, 6, 2))
        << "one day is added, however far now is ahead";
}

// Monthly

TEST(NextRun, Monthly) {
    expectAll({
        {"day 15 12:00, now exactly then", monthly(clockTime(12), 15), at(2026, 1, 15, 12),
         at(2026, 1, 15, 12)},
        {"day 15 12:00, a second later", monthly(clockTime(12), 15), at(2025, 12, 15, 12, 0, 1),
         at(2026, 1, 15, 12)},
        {"day 15 12:00, a second earlier", monthly(clockTime(12), 15), at(2026, 1, 15, 11, 59, 59),
         at(2026, 1, 15, 12)},
        {"day 31 on 2 May", monthly(clockTime(7, 30), 31), at(2026, 5, 2), at(2026, 5, 31, 7, 30)},
        {"day 31 of June is 1 July", monthly(clockTime(7, 30), 31), at(2026, 6, 5), at(2026, 7, 1, 7, 30)},
        {"day 31, computed on 1 July, after that", monthly(clockTime(7, 30), 31), at(2026, 7, 1, 8),
         at(2026, 7, 31, 7, 30)},
        {"day 30 of February is 2 March", monthly(clockTime(7), 30), at(2026, 2, 3), at(2026, 3, 2, 7)},
        {"day 30 of February is 1 March in a leap year", monthly(clockTime(7), 30), at(2024, 2, 3),
         at(2024, 3, 1, 7)},
        {"day 29 of a leap February", monthly(clockTime(7), 29), at(2024, 2, 29, 7), at(2024, 2, 29, 7)},
        {"day 29 of another February is 1 March", monthly(clockTime(7), 29), at(2026, 2, 28, 8),
         at(2026, 3, 1, 7)},
        {"day 1, gone by", monthly(clockTime(7), 1), at(2026, 1, 1, 7, 0, 1), at(2026, 2, 1, 7)},
        {"day 1, December to January", monthly(clockTime(7), 1), at(2025, 12, 31, 23, 59, 59),
         at(2026, 1, 1, 7)},
        {"day 10, gone by in December", monthly(clockTime(7), 10), at(2025, 12, 10, 8), at(2026, 1, 10, 7)},
        {"day 0 is day 1", monthly(clockTime(7), 0), at(2026, 1, 1), at(2026, 1, 1, 7)},
        {"day -5 is day 1", monthly(clockTime(7), -5), at(2026, 1, 1, 8), at(2026, 2, 1, 7)},
        {"the lowest day is day 1", monthly(clockTime(7), lowest), at(2026, 1, 1), at(2026, 1, 1, 7)},
        {"a negative time is midnight", monthly(TimeValue(lowest), 3), at(2026, 1, 1), at(2026, 1, 3)},
    });
}

TEST(NextRun, MonthlyDay31ComputedOn5AprilIs1May) {
    const TimeValue thirtyDaysOn = at(2026, 4, 1) + TimeSpan::fromDays(30) + TimeSpan::fromMinutes(450);
    const TimeValue result = nextRun(monthly(clockTime(7, 30), 31), at(2026, 4, 5, 12));
    EXPECT_EQ(result, thirtyDaysOn);
    // South of the equator the clock changes in April, and the fixed days end an hour off.
    if (at(2026, 4, 1) + TimeSpan::fromDays(30) == at(2026, 5, 1)) {
        EXPECT_EQ(result, at(2026, 5, 1, 7, 30));
    }
}

TEST(NextRun, MonthlyTakesTheMonthFromTheClockAndComparesWithNow) {
    const ScheduledProject entry = monthly(clockTime(7), 10);
    EXPECT_EQ(nextRun(entry, at(2025, 12, 31, 23, 59, 59), at(2026, 1, 1)), at(2026, 1, 10, 7))
        << "over the year's end";
    EXPECT_EQ(nextRun(entry, at(2025, 11, 5), at(2026, 1, 20)), at(2026, 1, 10, 7))
        << "later than now, though earlier than the clock";
    EXPECT_EQ(nextRun(entry, at(2026, 7, 1), at(2026, 1, 20)), at(2026, 2, 10, 7))
        << "the month after the clock's, however far now is ahead";
}

// Once

TEST(NextRun, OnceIsNeverFromItsTimeOn) {
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

TEST(NextRun, OnceAndHourlyDoNotAskTheClock) {
    const TimeValue now = at(2026, 1, 5, 8);
    const TimeValue elsewhere = at(2030, 6, 7, 12, 34);
    EXPECT_EQ(nextRun(once(at(2026, 1, 6)), now, elsewhere), at(2026, 1, 6));
    EXPECT_EQ(nextRun(hourly(20), now, elsewhere), at(2026, 1, 5, 8, 20));
}

// Against the plain rules

std::vector<ScheduledProject> variousEntries() {
    std::vector<ScheduledProject> entries;
    for (const std::int32_t minutes : {0, 1, 29, 30, 59, 90, -7})
        entries.push_back(hourly(minutes));
    for (const TimeValue time : {clockTime(0), clockTime(0, 10), clockTime(1, 30), clockTime(2, 30),
                                 clockTime(12), clockTime(23, 59, 59)}) {
        for (const char* days : {"MTWTFSS", "M......", "......S", ".T.T.T.", "......."})
            entries.push_back(daily(time, days));
        for (const std::int32_t dayOfMonth : {0, 1, 8, 28, 29, 30, 31, 40})
            entries.push_back(monthly(time, dayOfMonth));
    }
    entries.push_back(once(at(2026, 3, 8, 2, 30)));
    return entries;
}

/// False, with a failure, at the first difference.
bool agrees(const ScheduledProject& entry, std::int32_t now, std::int32_t clock) {
    const TimeValue result = nextRun(entry, seconds(now), seconds(clock));
    const TimeValue expected = seconds(plainNextRun(entry, now, clock, false));
    EXPECT_EQ(result, expected) << "kind " << static_cast<int>(entry.kind) << ", time " << text(entry.time)
                                << ", minutes " << entry.minutes << ", day " << entry.dayOfMonth << ", now "
                                << text(seconds(now)) << ", clock " << text(seconds(clock)) << ": "
                                << text(result) << " instead of " << text(expected);
    return result == expected;
}

TEST(NextRunAgainstPlainRules, EverySecondAroundClockChanges) {
    const std::array entries = {hourly(0), hourly(30), daily(clockTime(1, 30), "MTWTFSS"),
                                daily(clockTime(2, 30), "M.....S"), monthly(clockTime(2), 9)};
    for (const std::int32_t change : test::clockChanges())
        for (std::int32_t now = change - 4500; now <= change + 5400; ++now)
            for (const ScheduledProject& entry : entries)
                ASSERT_TRUE(agrees(entry, now, now));
}

TEST(NextRunAgainstPlainRules, DaysAroundClockChanges) {
    const std::vector<ScheduledProject> entries = variousEntries();
    for (const std::int32_t change : test::clockChanges())
        for (std::int32_t now = change - 9 * day; now <= change + 2 * day; now += 1799)
            for (const ScheduledProject& entry : entries)
                ASSERT_TRUE(agrees(entry, now, now));
}

TEST(NextRunAgainstPlainRules, EverySecondAroundMidnightsThatEndSomething) {
    const std::vector<ScheduledProject> entries = variousEntries();
    const TimeValue begins[] = {at(2026, 1, 1),  at(2026, 2, 1),  at(2026, 3, 1),
                                at(2024, 2, 29), at(2024, 3, 1),  at(2000, 3, 1),
                                at(2025, 5, 1),  at(2026, 6, 30), at(2038, 1, 1)};
    for (const TimeValue begin : begins)
        for (std::int32_t now = begin.seconds() - 65; now <= begin.seconds() + 65; ++now)
            for (const ScheduledProject& entry : entries)
                ASSERT_TRUE(agrees(entry, now, now));
}

TEST(NextRunAgainstPlainRules, NowAndTheClockDiffer) {
    std::mt19937 random(20260103);
    const std::vector<ScheduledProject> entries = variousEntries();
    const auto around = [&](std::int32_t center, std::int32_t width) {
        return center + static_cast<std::int32_t>(random() % static_cast<std::uint32_t>(2 * width)) - width;
    };
    for (int i = 0; i < 1500; ++i) {
        const auto now = static_cast<std::int32_t>(100'000'000 + random() % 2'000'000'000);
        for (const std::int32_t clock : {now + 1, around(now, 100), around(now, 40 * day)})
            for (const ScheduledProject& entry : entries)
                ASSERT_TRUE(agrees(entry, now, clock)) << "seed 20260103, round " << i;
    }
}

TEST(NextRunAgainstPlainRules, TheLastSecondsOfTheRange) {
    const std::vector<ScheduledProject> entries = variousEntries();
    // 2147483647 is 2038-01-19 03:14:07 UTC.
    for (std::int32_t now = highest - 5000; now < highest; now += now < highest - 100 ? 61 : 1)
        for (const ScheduledProject& entry : entries)
            ASSERT_TRUE(agrees(entry, now, now));
    EXPECT_EQ(nextRun(once(seconds(highest - 1)), seconds(highest - 2)), seconds(highest - 1));
    EXPECT_EQ(nextRun(once(seconds(highest - 1)), seconds(highest - 1)), TimeValue::never());
}

TEST(NextRunAgainstPlainRules, ExtremeValues) {
    const std::int32_t extremes[] = {
        lowest,     lowest + 1, -86400,        -3600,           -60,         -1,     0,     1,
        59,         60,         3599,          86399,           86400,       25000,  25001, 25002,
        35'791'394, 35'791'395, 1'800'000'000, highest - 86400, highest - 1, highest};
    for (const int kind : {0, 1, 2, 3, 4, 5, 6})
        for (const std::int32_t value : extremes)
            for (const std::int32_t time : extremes)
                for (const std::int32_t now : extremes)
                    for (const std::int32_t clock : {now, 0, lowest, 1'800'000'000, highest}) {
                        ScheduledProject entry = ofKind(kind);
                        entry.minutes = entry.dayOfMonth = value;
                        entry.time = seconds(time);
                        entry.weekdays = {0, 0, 1, 0, 0, 0, 0};
                        ASSERT_TRUE(agrees(entry, now, clock));
                    }
}

// Daylight saving time: days are steps of 86400 seconds

/// The first second after the clock was put back, or forward, in the years looked at.
std::vector<std::int32_t> changesBy(std::int32_t gained) {
    std::vector<std::int32_t> instants;
    for (const std::int32_t before : test::clockChanges())
        for (std::int32_t t = before; t <= before + 900; ++t) {
            const std::int32_t step = (clockTimeOf(t + 1) - clockTimeOf(t) + day) % day;
            if (step != 1) {
                if ((step > day / 2) == (gained > 0))
                    instants.push_back(t + 1);
                break;
            }
        }
    return instants;
}

TimeValue midnightBefore(std::int32_t t) {
    const std::tm fields = fieldsOf(t);
    return at(fields.tm_year + 1900, fields.tm_mon + 1, fields.tm_mday);
}

TimeValue midnightAfter(std::int32_t t) {
    const std::tm fields = fieldsOf(t);
    return at(fields.tm_year + 1900, fields.tm_mon + 1, fields.tm_mday + 1);
}

TEST(NextRunAcrossClockChanges, ADailyEntryRunsAnHourEarlyAfterTheClockIsPutBack) {
    for (const std::int32_t change : changesBy(3600)) {
        // Computed at noon of the day before, for every day at 08:00, which is gone by.
        const TimeValue dayBefore = midnightBefore(change - day);
        const TimeValue noon = dayBefore + TimeSpan::fromMinutes(12 * 60);
        const TimeValue result = nextRun(daily(clockTime(8), "MTWTFSS"), noon);
        EXPECT_EQ(result, dayBefore + TimeSpan::fromMinutes(8 * 60) + TimeSpan::fromDays(1));
        EXPECT_LE(clockTimeOf(result.seconds()), 7 * 3600 + 1800) << text(result);
    }
}

TEST(NextRunAcrossClockChanges, ADailyEntryRunsAnHourLateAfterTheClockIsPutForward) {
    for (const std::int32_t change : changesBy(-3600)) {
        const TimeValue dayBefore = midnightBefore(change - day);
        const TimeValue noon = dayBefore + TimeSpan::fromMinutes(12 * 60);
        const TimeValue result = nextRun(daily(clockTime(8), "MTWTFSS"), noon);
        EXPECT_GE(clockTimeOf(result.seconds()), 8 * 3600 + 1800) << text(result);
    }
}

TEST(NextRunAcrossClockChanges, AnEntryAfterMidnightIsDueAgainUntilTheLongDaysEnd) {
    for (const std::int32_t change : changesBy(3600)) {
        const TimeValue end = midnightAfter(change);
        const TimeValue now = end - TimeSpan::fromMinutes(5);
        // The day has more than 86400 seconds, and one day is added once.
        const TimeValue result = nextRun(daily(clockTime(0, 10), "MTWTFSS"), now);
        EXPECT_EQ(result, midnightBefore(change) + TimeSpan::fromDays(1) + TimeSpan::fromMinutes(10));
        EXPECT_LT(result, now) << text(result);
    }
}

// What the rules are made of

TEST(TimeOfDay, CountsFromLocalMidnight) {
    EXPECT_EQ(scheduler::timeOfDay(at(2026, 1, 5)).seconds(), 0);
    EXPECT_EQ(scheduler::timeOfDay(at(2026, 1, 5, 0, 0, 1)).seconds(), 1);
    EXPECT_EQ(scheduler::timeOfDay(at(2026, 7, 5, 13, 14, 15)).seconds(), 15 + (13 * 60 + 14) * 60);
    EXPECT_EQ(scheduler::timeOfDay(at(2024, 2, 29, 23, 59, 59)).seconds(), 86399);
}

TEST(TimeOfDay, IsZeroForANegativeTime) {
    for (const std::int32_t t : {-1, -3600, -86399, lowest})
        EXPECT_EQ(scheduler::timeOfDay(TimeValue(t)).seconds(), 0) << t;
}

TEST(LocalMidnight, IsTheSameDatesFirstSecond) {
    EXPECT_EQ(scheduler::localMidnight(at(2026, 1, 5, 23, 59, 59)), at(2026, 1, 5));
    EXPECT_EQ(scheduler::localMidnight(at(2026, 1, 5)), at(2026, 1, 5));
    EXPECT_EQ(scheduler::localMidnight(at(2024, 2, 29, 12)), at(2024, 2, 29));
}

TEST(HourStart, DropsMinutesAndSeconds) {
    EXPECT_EQ(scheduler::hourStart(at(2026, 1, 5, 23, 59, 59)), at(2026, 1, 5, 23));
    EXPECT_EQ(scheduler::hourStart(at(2026, 1, 5, 23)), at(2026, 1, 5, 23));
}

TEST(MonthStarts, AreTheClocksMonthsAndTheNext) {
    test::FakeClock clock;
    for (int month = 1; month <= 12; ++month) {
        clock.set(at(2025, month, 28, 23, 59, 59));
        EXPECT_EQ(scheduler::monthStart(clock), at(2025, month, 1)) << month;
        EXPECT_EQ(scheduler::nextMonthStart(clock), month == 12 ? at(2026, 1, 1) : at(2025, month + 1, 1))
            << month;
        clock.set(at(2025, month, 1));
        EXPECT_EQ(scheduler::monthStart(clock), at(2025, month, 1)) << month;
    }
}

TEST(EngineState, IsNeitherStartingNorSuspendedAndReadsTheSystemsClock) {
    const EngineState state;
    EXPECT_FALSE(state.startupFlag);
    EXPECT_FALSE(state.suspended);
    EXPECT_EQ(state.clock, &base::systemClock());
}

} // namespace
