#include "scheduler/model/nextrun.h"
#include "tests/scheduler/model/entries.h"
#include "tests/support/fakeclock.h"
#include "tests/support/instants.h"
#include "tests/support/plainentries.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <random>
#include <vector>

namespace {

using namespace test;
using base::TimeValue;
using scheduler::ScheduledProject;

constexpr std::int32_t day = 86400;

// Fewer cases, because the sanitizers are slow.
#ifdef _WIN32
constexpr unsigned casesPerCheck = 1;
#else
constexpr unsigned casesPerCheck = 7;
#endif

std::vector<ScheduledProject> variousEntries() {
    std::vector<ScheduledProject> entries = oneOfEachKind();
    for (const std::int32_t minutes : {0, 1, 29, 30, 59, 90, -7})
        entries.push_back(hourly(minutes));
    for (const TimeValue time : {clockTime(0), clockTime(0, 10), clockTime(1, 30), clockTime(2, 30),
                                 clockTime(22), clockTime(23, 59, 59)}) {
        for (const char* days : {"MTWTFSS", "M......", "......S", ".T.T.T.", "......."})
            entries.push_back(daily(time, days));
        for (const std::int32_t dayOfMonth : {0, 1, 8, 28, 29, 30, 31, 40})
            entries.push_back(monthly(time, dayOfMonth));
    }
    entries.push_back(once(at(2026, 3, 8, 2, 30)));
    return entries;
}

bool agrees(const ScheduledProject& entry, std::int32_t now, std::int32_t clock) {
    static std::minstd_rand random;
    if (random() % casesPerCheck != 0)
        return true;
    const FakeClock fakeClock{TimeValue(clock)};
    const plain::Second expected = plain::nextRunOf(plain::itemOf(entry), now, clock, false);
    const plain::Second alone = computeNextRun({}, entry, TimeValue(now), fakeClock).seconds();
    const plain::Second inSweep = scheduler::NextRuns({}, TimeValue(now), fakeClock).of(entry).seconds();
    EXPECT_EQ(alone, expected) << plain::itemOf(entry) << " at " << now << ", clock " << clock;
    EXPECT_EQ(inSweep, expected) << plain::itemOf(entry) << " at " << now << ", clock " << clock;
    return alone == expected && inSweep == expected;
}

TEST(NextRunAgainstPlainRules, AgreesEverySecondAroundClockChangesAndOnTheDaysBefore) {
    const std::array some = {hourly(0), hourly(30), daily(clockTime(1, 30), "MTWTFSS"),
                             daily(clockTime(2, 30), "M.....S"), monthly(clockTime(2), 9)};
    const std::vector<ScheduledProject> entries = variousEntries();
    for (const std::int32_t change : clockChanges()) {
        for (std::int32_t now = change - 4500; now <= change + 5400; ++now)
            for (const ScheduledProject& entry : some)
                ASSERT_TRUE(agrees(entry, now, now));
        for (std::int32_t now = change - 9 * day; now <= change + 2 * day; now += 1799)
            for (const ScheduledProject& entry : entries)
                ASSERT_TRUE(agrees(entry, now, now));
    }
}

TEST(NextRunAgainstPlainRules, AgreesEverySecondAroundTheEndsOfMonths) {
    const std::vector<ScheduledProject> entries = variousEntries();
    const TimeValue begins[] = {at(2026, 1, 1),  at(2026, 2, 1),  at(2026, 3, 1),
                                at(2024, 2, 29), at(2024, 3, 1),  at(2000, 3, 1),
                                at(2025, 5, 1),  at(2026, 6, 30), at(2038, 1, 1)};
    for (const TimeValue begin : begins)
        for (std::int32_t now = begin.seconds() - 65; now <= begin.seconds() + 65; ++now)
            for (const ScheduledProject& entry : entries)
                ASSERT_TRUE(agrees(entry, now, now));
}

TEST(NextRunAgainstPlainRules, AgreesWhenNowAndTheClockDiffer) {
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

TEST(NextRunAgainstPlainRules, AgreesInTheLastSecondsOfTheRange) {
    const std::vector<ScheduledProject> entries = variousEntries();
    // `highest` is 2038-01-19 03:14:07 UTC.
    for (std::int32_t now = highest - 5000; now < highest; now += now < highest - 100 ? 61 : 1)
        for (const ScheduledProject& entry : entries)
            ASSERT_TRUE(agrees(entry, now, now));
}

TEST(NextRunAgainstPlainRules, AgreesForExtremeValues) {
    const std::int32_t extremes[] = {lowest,      -86400, -3600, -60,        -1,         0,
                                     1,           59,     60,    3599,       86399,      86400,
                                     25000,       25001,  25002, 35'791'394, 35'791'395, 1'800'000'000,
                                     highest - 1, highest};
    for (int kind = 0; kind <= scheduler::kindCount; ++kind)
        for (const std::int32_t value : extremes)
            for (const std::int32_t time : extremes)
                for (const std::int32_t now : extremes)
                    for (const std::int32_t clock : {now, 0, lowest, 1'800'000'000, highest}) {
                        ScheduledProject entry = ofKind(kind);
                        entry.minutes = entry.dayOfMonth = value;
                        entry.time = TimeValue(time);
                        entry.weekdays = {0, 0, 1, 0, 0, 0, 0};
                        ASSERT_TRUE(agrees(entry, now, clock));
                    }
}

} // namespace
