#include "lib/base/locale.h"
#include "scheduler/model/descriptions.h"
#include "tests/scheduler/model/describedentries.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>

namespace {

using base::TimeValue;
using scheduler::kindCount;
using scheduler::RunCommand;
using scheduler::ScheduledProject;
using test::after;
using test::atTime;
using test::daily;
using test::DescriptionsTest;
using test::monthly;
using test::ofKind;
using test::Schedule;
using test::someTime;
using test::timeText;
using test::withPath;

constexpr std::int32_t lowest = std::numeric_limits<std::int32_t>::min();

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
        {"an unknown kind", atTime(kindCount, someTime()), "on " + date + at},
        {"kind -1", atTime(-1, someTime()), "on " + date + at},
        {"an unknown kind at no time", atTime(kindCount, TimeValue()), "(unknown)"},
    };
    for (const Schedule& row : table)
        EXPECT_EQ(describeSchedule(row.entry, list), row.phrase) << row.what;
}

TEST_F(DescriptionsTest, TimesAreInTheUsersFormWithoutSeconds) {
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

} // namespace
