#include "tests/scheduler/model/nextruncases.h"
#include "tests/support/instants.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <ctime>
#include <random>
#include <vector>

namespace {

using base::TimeValue;
using scheduler::kindCount;
using scheduler::ScheduledProject;
using test::at;
using test::clockTime;
using test::clockTimeOf;
using test::daily;
using test::day;
using test::fieldsOf;
using test::highest;
using test::hourly;
using test::lowest;
using test::made;
using test::monthly;
using test::nextRun;
using test::nextRunInSweep;
using test::ofKind;
using test::once;
using test::seconds;
using test::text;

// The rules told once more with the runtime's calendar alone

constexpr std::int32_t wrapped(std::int64_t seconds) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(seconds));
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

/// False, with a failure, at the first difference, be the entry looked at alone or in a sweep.
bool agrees(const ScheduledProject& entry, std::int32_t now, std::int32_t clock) {
    const TimeValue expected = seconds(plainNextRun(entry, now, clock, false));
    const TimeValue alone = nextRun(entry, seconds(now), seconds(clock));
    const TimeValue inSweep = nextRunInSweep(entry, seconds(now), seconds(clock));
    const bool agree = alone == expected && inSweep == expected;
    EXPECT_TRUE(agree) << "kind " << static_cast<int>(entry.kind) << ", time " << text(entry.time)
                       << ", minutes " << entry.minutes << ", day " << entry.dayOfMonth << ", now "
                       << text(seconds(now)) << ", clock " << text(seconds(clock)) << ": " << text(alone)
                       << ", in a sweep " << text(inSweep) << ", instead of " << text(expected);
    return agree;
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
    for (int kind = 0; kind <= kindCount; ++kind)
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

} // namespace
