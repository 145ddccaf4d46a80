#include "lib/base/formatting.h"
#include "lib/base/locale.h"
#include "scheduler/model/descriptions.h"
#include "tests/support/fakeclock.h"
#include "tests/support/filledentry.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <vector>

namespace {

using base::TimeSpan;
using base::TimeValue;
using scheduler::RunCommand;
using scheduler::ScheduledProject;
using scheduler::ScheduleKind;
using scheduler::ScheduleList;

constexpr std::int32_t lowest = std::numeric_limits<std::int32_t>::min();

TimeValue someTime() {
    return TimeValue::fromLocal(2026, 1, 5, 20, 0, 45, -1);
}

/// Without seconds, in the user's form.
std::string timeText(TimeValue t = someTime()) {
    return base::formatLocaleTime(t, false, true);
}

ScheduledProject withPath(const std::string& path) {
    ScheduledProject entry;
    entry.path = path;
    return entry;
}

ScheduledProject ofKind(int kind, std::int32_t minutes = 0) {
    ScheduledProject entry;
    entry.kind = static_cast<ScheduleKind>(kind);
    entry.minutes = minutes;
    return entry;
}

ScheduledProject after(std::int32_t index, std::int32_t minutes = 0) {
    ScheduledProject entry = ofKind(0, minutes);
    entry.afterIndex = index;
    return entry;
}

/// `days` has a mark for each day from Monday to Sunday: a point for a day without a run.
ScheduledProject daily(const std::string& days, TimeValue time = someTime()) {
    ScheduledProject entry = ofKind(3);
    entry.time = time;
    for (std::size_t i = 0; i < entry.weekdays.size(); ++i)
        entry.weekdays[i] = days[i] != '.';
    return entry;
}

ScheduledProject monthly(std::int32_t dayOfMonth, TimeValue time = someTime()) {
    ScheduledProject entry = ofKind(4);
    entry.dayOfMonth = dayOfMonth;
    entry.time = time;
    return entry;
}

ScheduledProject atTime(int kind, TimeValue time) {
    ScheduledProject entry = ofKind(kind);
    entry.time = time;
    return entry;
}

class DescriptionsTest : public testing::Test {
protected:
    DescriptionsTest() {
        list.append(withPath("C:\\Sites\\first.kra"));
        list.append(withPath("C:\\Sites\\news.daily.kra"));
        list.append(withPath("run:cmd /c exit"));
    }

    ScheduleList list;
    test::FakeClock clock{someTime()};
    scheduler::EngineState state{.startupFlag = false, .suspended = false, .clock = &clock};
};

// Names

TEST(DisplayName, IsTheProjectsTitleOrTheWholeCommandLine) {
    struct Row {
        const char* path;
        const char* name;
    };
    for (const Row& row : {
             Row{"C:\\Sites\\news.daily.kra", "news.daily"},
             Row{"C:\\Sites\\\\news.kra", "news"},
             Row{"news.kra", "news"},
             Row{"news", "news"},
             Row{"C:/Sites/news.kra", "news"},
             Row{"C:\\Sites/old\\news.kra", "news"},
             Row{"C:\\Sites\\old/news.kra", "old/news"}, // slashes count only without a backslash
             Row{"C:\\Si.tes\\news", "news"},
             Row{"C:\\Sites\\.kra", ""},
             Row{"C:\\Sites\\", ""},
             Row{"", ""},
             Row{"run:\"C:\\x\\y.exe\" a.b", "run:\"C:\\x\\y.exe\" a.b"},
             Row{"run:", "run:"},
             Row{"RUN:C:\\x\\y.exe", "y"}, // the prefix is in small letters
             Row{"run.kra", "run"},
         })
        EXPECT_EQ(displayName(withPath(row.path)), row.name) << row.path;
}

// When

struct Schedule {
    const char* what;
    ScheduledProject entry;
    std::string phrase;
};

TEST_F(DescriptionsTest, WhenAnEntryRuns) {
    const std::string at = " at " + timeText();
    const std::string date = base::formatLocaleDate(someTime(), false);
    const Schedule table[] = {
        {"after", after(1), "when project news.daily is finished"},
        {"after, 1", after(1, 1), "1 minute after project news.daily is finished"},
        {"after, 2", after(1, 2), "2 minutes after project news.daily is finished"},
        {"after, 1500", after(1, 1500), "1500 minutes after project news.daily is finished"},
        {"after, -1", after(1, -1), "-1 minutes after project news.daily is finished"},
        {"after the first", after(0), "when project first is finished"},
        {"after a command line", after(2), "when project run:cmd /c exit is finished"},
        {"after none", after(3), "when project (unknown) is finished"},
        {"after none, 1", after(-1, 1), "1 minute after project (unknown) is finished"},
        {"after none, 2", after(lowest, 2), "2 minutes after project (unknown) is finished"},
        {"startup", ofKind(1), "at startup"},
        {"startup, 1", ofKind(1, 1), "1 minute after startup"},
        {"startup, 2", ofKind(1, 2), "2 minutes after startup"},
        {"startup, lowest", ofKind(1, lowest), "-2147483648 minutes after startup"},
        {"hourly", ofKind(2), "hourly on the hour"},
        {"hourly, 1", ofKind(2, 1), "hourly at 1 minute after the hour"},
        {"hourly, 59", ofKind(2, 59), "hourly at 59 minutes after the hour"},
        {"every day", daily("MTWTFSS"), "every day" + at},
        {"Monday, Wednesday, Friday", daily("M.W.F.."), "every Mon/Wed/Fri" + at},
        {"Sunday only: no slash", daily("......S"), "every Sun" + at},
        {"Monday only", daily("M......"), "every Mon" + at},
        {"all but Sunday", daily("MTWTFS."), "every Mon/Tue/Wed/Thu/Fri/Sat" + at},
        {"all but Monday", daily(".TWTFSS"), "every Tue/Wed/Thu/Fri/Sat/Sun" + at},
        {"no day", daily("......."), "every " + at},
        {"every day at no time", daily("MTWTFSS", TimeValue()), "every day at "},
        {"Tuesday at no time", daily(".T.....", TimeValue()), "every Tue at "},
        {"monthly", monthly(1), "on day 1 of every month" + at},
        {"monthly, 31", monthly(31), "on day 31 of every month" + at},
        {"monthly, -3", monthly(-3), "on day -3 of every month" + at},
        {"monthly at no time", monthly(15, TimeValue()), "on day 15 of every month at "},
        {"once", atTime(5, someTime()), "on " + date + at},
        {"once at no time", atTime(5, TimeValue()), "(unknown)"},
        {"kind 6", atTime(6, someTime()), "on " + date + at},
        {"kind -1", atTime(-1, someTime()), "on " + date + at},
        {"kind 6 at no time", atTime(6, TimeValue()), "(unknown)"},
    };
    for (const Schedule& row : table)
        EXPECT_EQ(describeSchedule(row.entry, list), row.phrase) << row.what;
}

TEST_F(DescriptionsTest, TimesAreInTheUsersFormWithoutSeconds) {
    if (timeText() != "8:00 PM")
        GTEST_SKIP() << "not a United States locale, but one that writes " << timeText();
    EXPECT_EQ(describeSchedule(daily("M.W.F.."), list), "every Mon/Wed/Fri at 8:00 PM");
    EXPECT_EQ(describeSchedule(atTime(5, someTime()), list), "on 1/5/2026 at 8:00 PM");
}

TEST_F(DescriptionsTest, EveryDayNeedsAllSevenFlags) {
    for (std::size_t missing = 0; missing < 7; ++missing) {
        ScheduledProject entry = daily("MTWTFSS");
        entry.weekdays[missing] = 0;
        EXPECT_FALSE(describeSchedule(entry, list).starts_with("every day")) << missing;
    }
    ScheduledProject entry = daily("MTWTFSS");
    entry.weekdays.fill(255);
    EXPECT_TRUE(describeSchedule(entry, list).starts_with("every day")) << "any flag but 0 is set";
}

// How

struct HowItRuns {
    int command;
    std::int32_t minutes;
    const char* dialup;
    std::uint8_t disconnect;
    const char* phrase;
};

TEST(DescribeRun, Table) {
    const HowItRuns table[] = {
        {0, 0, "", 0, "Run normally"},
        {1, 0, "", 0, "Run update only"},
        {2, 0, "", 0, "Relink files"},
        {3, 0, "", 0, "Run complete refresh"},
        {1, 90, "Office line", 1,
         "Run update only for up to 90 minutes via Office line; disconnect when done"},
        {0, 1, "", 0, "Run normally for up to 1 minute"},
        {0, 2, "", 0, "Run normally for up to 2 minutes"},
        {0, -1, "", 0, "Run normally for up to -1 minutes"},
        {0, lowest, "", 0, "Run normally for up to -2147483648 minutes"},
        {3, 0, "Office line", 0, "Run complete refresh via Office line"},
        {0, 0, "100% s", 0, "Run normally via 100% s"},
        {0, 0, "", 1, "Run normally; disconnect when done"},
        {0, 0, "", 7, "Run normally; disconnect when done"},
        {0, 1, "a", 1, "Run normally for up to 1 minute via a; disconnect when done"},
        {2, 90, "Office line", 1, "Relink files"},
        {4, 0, "", 0, ""},
        {-1, 0, "", 0, ""},
    };
    for (const HowItRuns& row : table) {
        ScheduledProject entry;
        entry.runCommand = static_cast<RunCommand>(row.command);
        entry.timeLimitMinutes = row.minutes;
        entry.dialupEntry = row.dialup;
        entry.disconnectWhenDone = row.disconnect;
        EXPECT_EQ(describeRun(entry), row.phrase);
    }
}

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
        EXPECT_EQ(describeNextRun(row.entry, list, state), row.phrase) << row.what;
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
            EXPECT_EQ(describeNextRun(entry, list, state), expected) << bits;
        }
}

TEST_F(DescriptionsTest, TheNextRunFollowsTheClock) {
    const ScheduledProject entry = dueIn(5, ofKind(2));
    EXPECT_NE(describeNextRun(entry, list, state), "Now");
    clock.advance(TimeSpan::fromSeconds(4));
    EXPECT_NE(describeNextRun(entry, list, state), "Now");
    clock.advance(TimeSpan::fromSeconds(1));
    EXPECT_EQ(describeNextRun(entry, list, state), "Now");
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
            return describeNextRun(entry, list, state) + describeLastRun(entry, clock);
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
    describeNextRun(entry, list, state);
    EXPECT_EQ(entry, test::filledEntry());
    EXPECT_EQ(clock.now(), someTime());
}

} // namespace
