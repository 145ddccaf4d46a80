#include "lib/base/formatting.h"
#include "scheduler/model/descriptions.h"
#include "tests/scheduler/model/describedentries.h"
#include "tests/support/filledentry.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

namespace {

using base::TimeSpan;
using base::TimeValue;
using scheduler::ScheduledProject;
using scheduler::ScheduleKind;
using test::after;
using test::daily;
using test::DescriptionsTest;
using test::monthly;
using test::ofKind;
using test::Schedule;
using test::someTime;

// The next run

ScheduledProject dueIn(std::int32_t seconds, ScheduledProject entry) {
    entry.nextRun = TimeValue(someTime().seconds() + seconds);
    return entry;
}

ScheduledProject neverDue(ScheduledProject entry) {
    entry.nextRun = TimeValue::never();
    return entry;
}

ScheduledProject dueAtOnce(ScheduledProject entry) {
    entry.nextRun = TimeValue();
    return entry;
}

TEST_F(DescriptionsTest, TheNextRun) {
    const auto relative = [](std::int32_t seconds) {
        return base::formatRelative(TimeValue(someTime().seconds() + seconds), someTime());
    };
    const Schedule table[] = {
        {"after, never", neverDue(after(1)), "waiting for news.daily"},
        {"after, its time set already", dueIn(60, after(1)), "waiting for news.daily"},
        {"after, due", dueIn(0, after(1)), "Now"},
        {"after a command line", neverDue(after(2)), "waiting for run:cmd /c exit"},
        {"after none", neverDue(after(3)), "waiting for (unknown)"},
        {"after none", neverDue(after(-1)), "waiting for (unknown)"},
        {"startup, never", neverDue(ofKind(1)), "next startup"},
        {"startup, a retry ahead", dueIn(60, ofKind(1)), "next startup"},
        {"startup, due at start-up until it starts", dueAtOnce(ofKind(1)), "Now"},
        {"once, its time passed", neverDue(ofKind(5)), "(never)"},
        {"unknown kind", neverDue(ofKind(9)), "(never)"},
        {"hourly", dueIn(600, ofKind(2)), relative(600)},
        {"daily", dueIn(86400, daily("MTWTFSS")), relative(86400)},
        {"monthly", dueIn(20 * 86400, monthly(1)), relative(20 * 86400)},
        {"once", dueIn(1, ofKind(5)), relative(1)},
        {"exactly now", dueIn(0, ofKind(2)), "Now"},
        {"gone by", dueIn(-1, ofKind(2)), "Now"},
        {"at once", dueAtOnce(ofKind(3)), "Now"},
    };
    for (const Schedule& row : table)
        EXPECT_EQ(describeNextRun(row.entry, list, state, clock), row.phrase) << row.what;
}

TEST_F(DescriptionsTest, TheNextRunsFirstRuleThatHoldsWins) {
    // Bit by bit: running, disabled, suspended; each with an entry that is due and one that is not.
    for (unsigned bits = 0; bits < 8; ++bits)
        for (ScheduledProject entry : {dueAtOnce(ofKind(2)), neverDue(ofKind(2))}) {
            const std::string plain = entry.nextRun == TimeValue() ? "Now" : "(never)";
            entry.running = bits & 1;
            entry.disabled = bits & 2;
            state.suspended = bits & 4;
            const std::string expected = bits & 1   ? "Running"
                                         : bits & 2 ? "(disabled)"
                                         : bits & 4 ? "(suspended)"
                                                    : plain;
            EXPECT_EQ(describeNextRun(entry, list, state, clock), expected) << bits;
        }
}

TEST_F(DescriptionsTest, TheNextRunFollowsTheClock) {
    const ScheduledProject entry = dueIn(5, ofKind(2));
    EXPECT_NE(describeNextRun(entry, list, state, clock), "Now");
    clock.advance(TimeSpan::fromSeconds(4));
    EXPECT_NE(describeNextRun(entry, list, state, clock), "Now");
    clock.advance(TimeSpan::fromSeconds(1));
    EXPECT_EQ(describeNextRun(entry, list, state, clock), "Now");
}

// The last run

TEST(DescribeLastRun, IsNeverOrARelativeTime) {
    ScheduledProject entry;
    EXPECT_EQ(describeLastRun(entry, someTime()), "Never");
    entry.lastRun = TimeValue::never();
    EXPECT_EQ(describeLastRun(entry, someTime()), "Never");
    for (const std::int32_t ago : {0, 60, 86400, 20 * 86400}) {
        entry.lastRun = TimeValue(someTime().seconds() - ago);
        EXPECT_EQ(describeLastRun(entry, someTime()), base::formatRelative(entry.lastRun, someTime()));
        EXPECT_NE(describeLastRun(entry, someTime()), "Never");
    }
}

TEST_F(DescriptionsTest, TheLastRunFollowsTheClock) {
    ScheduledProject entry;
    EXPECT_EQ(describeLastRun(entry, clock), "Never");
    entry.lastRun = someTime();
    const std::string today = describeLastRun(entry, clock);
    EXPECT_EQ(today, describeLastRun(entry, someTime()));
    clock.advance(TimeSpan::fromDays(20));
    EXPECT_NE(describeLastRun(entry, clock), today);
}

TEST_F(DescriptionsTest, ThePhrasesHoldForAsLongAsIsSaid) {
    int changes = 0;
    int looks = 0;
    for (const std::int32_t daysAhead : {-400, -3, 0, 2, 364, 366}) {
        ScheduledProject entry;
        entry.kind = ScheduleKind::Once;
        entry.nextRun = TimeValue(someTime().seconds() + daysAhead * 86400 + 4711);
        entry.lastRun = TimeValue(someTime().seconds() - 815);
        const auto phrasesAt = [&](TimeValue now) {
            clock.set(now);
            return describeNextRun(entry, list, state, clock) + describeLastRun(entry, clock);
        };
        std::string before;
        const TimeValue end = someTime() + TimeSpan::fromDays(5);
        for (TimeValue now = someTime(), until; now < end; now = until) {
            until = scheduler::phrasesHoldUntil(entry, now);
            ASSERT_GT(until, now);
            const std::string phrases = phrasesAt(now);
            ASSERT_EQ(phrasesAt(TimeValue(until.seconds() - 1)), phrases)
                << daysAhead << ' ' << now.seconds();
            changes += phrases != before;
            ++looks;
            before = phrases;
        }
    }
    EXPECT_GE(changes, 6 * 3 + 1 + 3) << "today, yesterday, earlier; now; tomorrow, today, now";
    EXPECT_LT(looks, 6 * 5 * (96 + 4 + 1)) << "quarters of an hour and two times a day";
}

TEST_F(DescriptionsTest, DescribingChangesNothing) {
    ScheduledProject entry = test::filledEntry();
    describeSchedule(entry, list);
    describeRun(entry);
    describeNextRun(entry, list, state, clock);
    EXPECT_EQ(entry, test::filledEntry());
    EXPECT_EQ(clock.now(), someTime());
}

} // namespace
