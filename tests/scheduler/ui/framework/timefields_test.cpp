// Runs in several time zones.
#include "scheduler/ui/framework/datetimeedit.h"
#include "scheduler/ui/framework/timeofdayedit.h"
#include "tests/scheduler/ui/framework/controldialog.h"
#include "tests/scheduler/ui/framework/pumping.h"
#include "tests/support/fakeclock.h"
#include "tests/support/instants.h"

#include <gtest/gtest.h>

namespace {

using base::TimeSpan;
using base::TimeValue;
using framework::dateTimeFromText;
using framework::dateTimeText;
using framework::timeOfDayFromText;
using framework::timeOfDayText;

TimeValue at(int hour, int minute, int second = 0) {
    return TimeValue::fromLocal(2005, 7, 23, hour, minute, second, -1);
}

class TimeFields : public test::ControlDialogTest {
protected:
    void loseFocus() { SendMessageA(edit.handle(), WM_KILLFOCUS, 0, 0); }

    test::FakeClock clock{at(12, 34, 56)};
    TimeValue field = TimeValue::fromLocal(2001, 2, 3, 9, 30, 0, -1);
    framework::TimeOfDayEdit edit{dialog, IDC_TIME, framework::bindTimeOfDay(field), clock};
    framework::DateTimeEdit date{dialog, IDC_DATE, framework::bindDateTime(field)};
};

TEST_F(TimeFields, DatesShowAmBeforeNoonAndPmFromNoon) {
    EXPECT_EQ(dateTimeText(at(0, 0)), "07/23/05 12:00 am");
    EXPECT_EQ(dateTimeText(at(9, 5)), "07/23/05 09:05 am");
    EXPECT_EQ(dateTimeText(at(11, 59)), "07/23/05 11:59 am");
    EXPECT_EQ(dateTimeText(at(12, 0)), "07/23/05 12:00 pm");
    EXPECT_EQ(dateTimeText(at(23, 59, 59)), "07/23/05 11:59 pm");
    EXPECT_EQ(dateTimeText(TimeValue(-1)), "am") << "no calendar fields";
}

TEST_F(TimeFields, ATimeOfDayShowsSecondsUnlessZero) {
    EXPECT_EQ(timeOfDayText(at(19, 54)), "7:54 PM");
    EXPECT_EQ(timeOfDayText(at(19, 54, 7)), "7:54:07 PM");
    EXPECT_EQ(timeOfDayText(TimeValue()), "");
}

TEST_F(TimeFields, ATimeOfDayIsAddedInSecondsToLocalMidnight) {
    for (const TimeValue now : {at(0, 0), at(12, 0, 1), at(23, 59, 59)})
        EXPECT_EQ(timeOfDayFromText("9:05 pm", now), at(21, 5));
    EXPECT_EQ(timeOfDayFromText("", at(12, 0)), at(0, 0));
    for (int day = 1; day <= 365; ++day) {
        const TimeValue noon = TimeValue::fromLocal(2005, 1, day, 12, 0, 0, -1);
        const TimeValue start = TimeValue::fromLocal(2005, 1, day, 0, 0, 0, -1);
        ASSERT_EQ(timeOfDayFromText("23:59:59", noon), start + TimeSpan::fromSeconds(86399)) << day;
    }
    // The midnight of a negative time is 0.
    EXPECT_EQ(timeOfDayFromText("0:01", TimeValue(-5)), TimeValue(60));
}

TEST_F(TimeFields, TextsSurviveARoundTrip) {
    for (int minute = 0; minute < 1440; ++minute)
        ASSERT_EQ(dateTimeFromText(dateTimeText(at(0, minute))), at(0, minute)) << minute;
    for (int second = 0; second < 86400; second += 7)
        ASSERT_EQ(timeOfDayFromText(timeOfDayText(at(0, 0, second)), at(12, 0)), at(0, 0, second)) << second;
    // From 3 January 1970 to the end of 2037. None of the tested zones skips or repeats noon.
    for (int day = 3; day <= 68 * 365 + 17; ++day) {
        const TimeValue noon = TimeValue::fromLocal(1970, 1, day, 12, 0, 0, -1);
        ASSERT_EQ(dateTimeFromText(dateTimeText(noon)), noon) << day;
    }
}

TEST_F(TimeFields, ATimeOfDayIsStoredWithTodaysDate) {
    EXPECT_EQ(edit.text(), "9:30 AM");
    SetWindowTextA(edit.handle(), "2105");
    edit.store();
    EXPECT_EQ(field, at(21, 5));
}

TEST_F(TimeFields, ATimeOfDayIsNormalisedWhenItLosesTheFocus) {
    SetWindowTextA(edit.handle(), "2105");
    test::pumpUntilIdle();
    EXPECT_EQ(edit.text(), "2105");
    loseFocus();
    EXPECT_EQ(edit.text(), "9:05 PM");
}

TEST_F(TimeFields, ATimeOfDayKeepsItsSecondsWhenItLosesTheFocus) {
    field = TimeValue::fromLocal(2001, 2, 3, 9, 30, 7, -1);
    open();
    loseFocus();
    EXPECT_EQ(edit.text(), "9:30:07 AM");
    edit.store();
    EXPECT_EQ(field, at(9, 30, 7)) << "the same time, today";
}

TEST_F(TimeFields, ATimeOfDayIsStoredAsShownOnDaysOfClockChanges) {
    for (const std::int32_t change : test::clockChanges()) {
        clock.set(TimeValue(change));
        field = TimeValue::fromLocal(2024, 1, 2, 9, 30, 0, -1);
        open();
        loseFocus();
        loseFocus();
        EXPECT_EQ(edit.text(), "9:30 AM") << change;
        for (const bool isTyped : {false, true}) {
            if (isTyped)
                SetWindowTextA(edit.handle(), "2105");
            loseFocus();
            const std::string shown = edit.text();
            edit.store();
            EXPECT_EQ(timeOfDayText(field), shown) << change;
        }
    }
}

TEST_F(TimeFields, ATimeOfDayIsLimitedToEightCharacters) {
    SetWindowTextA(edit.handle(), "");
    test::typeInto(edit.handle(), "1234567890");
    EXPECT_EQ(edit.text(), "12345678");
}

TEST_F(TimeFields, ADateIsLoadedStoredReadAndWritten) {
    EXPECT_EQ(date.text(), "02/03/01 09:30 am");
    EXPECT_EQ(date.time(), field);
    SetWindowTextA(date.handle(), "7/23/2005 9:05 pm");
    EXPECT_EQ(date.time(), at(21, 5));
    date.store();
    EXPECT_EQ(field, at(21, 5));
    SetWindowTextA(date.handle(), "no date");
    EXPECT_EQ(date.time(), TimeValue());
    date.setTime(at(21, 5));
    EXPECT_EQ(date.text(), "07/23/05 09:05 pm");
}

} // namespace
