#include "lib/base/locale.h"
#include "scheduler/ui/framework/datetext.h"

#include <gtest/gtest.h>

namespace {

using base::TimeSpan;
using base::TimeValue;

TimeValue at(int hour, int minute, int second = 0) {
    return TimeValue::fromLocal(2005, 7, 23, hour, minute, second, -1);
}

TEST(DateText, ADateIsReadAsItIsWritten) {
    for (const TimeValue time : {at(0, 0), at(0, 1), at(11, 59), at(12, 0), at(12, 30), at(23, 59)})
        EXPECT_EQ(framework::dateTimeFromText(framework::dateTimeText(time)), time);
    EXPECT_EQ(framework::dateTimeFromText("no date"), TimeValue());
}

TEST(DateText, SaysAmBelowTwelveAndPmFromThenOn) {
    EXPECT_EQ(framework::dateTimeText(at(0, 0)), "07/23/05 12:00 am");
    EXPECT_EQ(framework::dateTimeText(at(9, 5)), "07/23/05 09:05 am");
    EXPECT_EQ(framework::dateTimeText(at(11, 59)), "07/23/05 11:59 am");
    EXPECT_EQ(framework::dateTimeText(at(12, 0)), "07/23/05 12:00 pm");
    EXPECT_EQ(framework::dateTimeText(at(23, 59, 59)), "07/23/05 11:59 pm");
}

TEST(DateText, ATimeWithoutCalendarFieldsIsAm) {
    EXPECT_EQ(framework::dateTimeText(TimeValue(-1)), "am");
}

TEST(DateText, ATimeOfDayShowsItsSecondsOnlyWhenThereAreAny) {
    EXPECT_EQ(framework::timeOfDayText(at(19, 54)), base::formatLocaleTime(at(19, 54), false, true));
    EXPECT_EQ(framework::timeOfDayText(at(19, 54, 7)), base::formatLocaleTime(at(19, 54, 7), false, false));
    EXPECT_NE(framework::timeOfDayText(at(19, 54, 7)), framework::timeOfDayText(at(19, 54)));
    EXPECT_EQ(framework::timeOfDayText(TimeValue()), "");
}

TEST(DateText, ATimeOfDayCountsFromTheLocalMidnightOfTheDay) {
    for (const TimeValue now : {at(0, 0), at(12, 0, 1), at(23, 59, 59)})
        EXPECT_EQ(framework::timeOfDayFromText("9:05 pm", now), at(21, 5));
    EXPECT_EQ(framework::timeOfDayFromText("", at(12, 0)), at(0, 0));
}

TEST(DateText, ATimeOfDayIsAddedInSecondsToTheMidnightOfADayOfAnyLength) {
    const TimeValue midnight = TimeValue::fromLocal(2005, 1, 1, 0, 0, 0, -1);
    for (int day = 1; day <= 365; ++day) {
        const TimeValue noon = TimeValue::fromLocal(2005, 1, day, 12, 0, 0, -1);
        const TimeValue start = TimeValue::fromLocal(2005, 1, day, 0, 0, 0, -1);
        ASSERT_EQ(framework::timeOfDayFromText("23:59:59", noon), start + TimeSpan::fromSeconds(86399))
            << day;
    }
    EXPECT_EQ(framework::timeOfDayFromText("0:00", midnight), midnight);
}

TEST(DateText, EveryMinuteOfADayIsReadBackFromItsText) {
    for (int minute = 0; minute < 1440; ++minute) {
        const TimeValue time = at(0, minute);
        ASSERT_EQ(framework::dateTimeFromText(framework::dateTimeText(time)), time) << minute;
        ASSERT_EQ(framework::timeOfDayFromText(framework::timeOfDayText(time), at(12, 0)), time) << minute;
    }
}

TEST(DateText, EverySecondOfATimeOfDayIsReadBackFromItsText) {
    for (int second = 0; second < 86400; second += 7) {
        const TimeValue time = at(0, 0, second);
        ASSERT_EQ(framework::timeOfDayFromText(framework::timeOfDayText(time), at(12, 0)), time) << second;
    }
}

TEST(DateText, EveryDayIsReadBackFromItsText) {
    // Late enough to be 1970 in every zone, and at noon, which no clock skips or repeats.
    for (int day = 3; day < 68 * 366; ++day) {
        const TimeValue noon = TimeValue::fromLocal(1970, 1, day, 12, 0, 0, -1);
        if (noon.year() > 2037)
            break;
        ASSERT_EQ(framework::dateTimeFromText(framework::dateTimeText(noon)), noon) << day;
    }
}

TEST(DateText, AMidnightThatCannotBeBuiltCountsAsZero) {
    // A negative time has no calendar fields to build a midnight of.
    EXPECT_EQ(framework::timeOfDayFromText("0:01", TimeValue(-5)), TimeValue(60));
}

} // namespace
