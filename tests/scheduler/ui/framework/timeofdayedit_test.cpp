#include "lib/base/locale.h"
#include "scheduler/ui/framework/datetimeedit.h"
#include "scheduler/ui/framework/dialog.h"
#include "scheduler/ui/framework/timeofdayedit.h"
#include "tests/scheduler/ui/framework/pumping.h"
#include "tests/scheduler/ui/framework/testdialogs.h"
#include "tests/support/fakeclock.h"
#include "tests/support/instants.h"

#include <gtest/gtest.h>

namespace {

using base::TimeValue;
using test::typeInto;

class TimeDialog : public framework::Dialog {
public:
    TimeDialog(TimeValue& time, const base::Clock& clock)
        : Dialog(IDD_CONTROLS),
          edit(*this, IDC_TIME, framework::bindTimeOfDay(time), clock),
          date(*this, IDC_DATE, framework::bindDateTime(time)) {}

    framework::TimeOfDayEdit edit;
    framework::DateTimeEdit date;
};

class TimeOfDayEdit : public testing::Test {
protected:
    HWND handle() const { return dialog.edit.handle(); }

    test::FakeClock clock{TimeValue::fromLocal(2005, 7, 23, 12, 34, 56, -1)};
    TimeValue field = TimeValue::fromLocal(2001, 2, 3, 9, 30, 0, -1);
    TimeDialog dialog{field, clock};
};

const TimeValue fiveAfterNine = TimeValue::fromLocal(2005, 7, 23, 21, 5, 0, -1);

TEST_F(TimeOfDayEdit, LoadsTheTimeOfDayAndStoresItOnTodaysDate) {
    ASSERT_TRUE(dialog.open(nullptr));
    EXPECT_EQ(dialog.edit.text(), base::formatLocaleTime(field, false, true));
    SetWindowTextA(handle(), "2105");
    dialog.edit.store();
    EXPECT_EQ(field, fiveAfterNine);
}

TEST_F(TimeOfDayEdit, ShowsItsNormalFormWhenItLosesTheFocus) {
    ASSERT_TRUE(dialog.open(nullptr));
    SetWindowTextA(handle(), "2105");
    SendMessageA(handle(), WM_KILLFOCUS, 0, 0);
    EXPECT_EQ(dialog.edit.text(), base::formatLocaleTime(fiveAfterNine, false, true));
}

TEST_F(TimeOfDayEdit, LosingTheFocusUntouchedItStaysAsItIs) {
    field = TimeValue::fromLocal(2001, 2, 3, 9, 30, 7, -1);
    ASSERT_TRUE(dialog.open(nullptr));
    const std::string shown = dialog.edit.text();
    SendMessageA(handle(), WM_KILLFOCUS, 0, 0);
    EXPECT_EQ(dialog.edit.text(), shown);
    dialog.edit.store();
    EXPECT_EQ(field, TimeValue::fromLocal(2005, 7, 23, 9, 30, 7, -1)) << "the same time, today";
}

TEST_F(TimeOfDayEdit, UntouchedItStaysAsItIsOnTheDaysOnWhichTheClockIsChanged) {
    for (const std::int32_t change : test::clockChanges()) {
        clock.set(TimeValue(change));
        field = TimeValue::fromLocal(2024, 1, 2, 9, 30, 0, -1);
        ASSERT_TRUE(dialog.open(nullptr));
        const std::string shown = dialog.edit.text();
        for (int round = 0; round < 2; ++round)
            SendMessageA(handle(), WM_KILLFOCUS, 0, 0);
        EXPECT_EQ(dialog.edit.text(), shown) << change;
        dialog.edit.store();
        EXPECT_EQ(framework::timeOfDayText(field), shown) << change;
        DestroyWindow(dialog.handle());
    }
}

TEST_F(TimeOfDayEdit, WhatItShowsWhenItHasLostTheFocusIsWhatItStores) {
    for (const std::int32_t change : test::clockChanges()) {
        clock.set(TimeValue(change));
        ASSERT_TRUE(dialog.open(nullptr));
        SetWindowTextA(handle(), "2105");
        SendMessageA(handle(), WM_KILLFOCUS, 0, 0);
        const std::string shown = dialog.edit.text();
        dialog.edit.store();
        EXPECT_EQ(framework::timeOfDayText(field), shown) << change;
        DestroyWindow(dialog.handle());
    }
}

TEST_F(TimeOfDayEdit, StaysAsTypedUntilThen) {
    ASSERT_TRUE(dialog.open(nullptr));
    SetWindowTextA(handle(), "2105");
    test::pumpUntilIdle();
    EXPECT_EQ(dialog.edit.text(), "2105");
}

TEST_F(TimeOfDayEdit, TakesEightCharacters) {
    ASSERT_TRUE(dialog.open(nullptr));
    SetWindowTextA(handle(), "");
    typeInto(handle(), "1234567890");
    EXPECT_EQ(dialog.edit.text(), "12345678");
}

TEST_F(TimeOfDayEdit, ADateAndTimeIsLoadedStoredReadAndWritten) {
    ASSERT_TRUE(dialog.open(nullptr));
    EXPECT_EQ(dialog.date.text(), "02/03/01 09:30 am");
    EXPECT_EQ(dialog.date.time(), field);
    SetWindowTextA(dialog.date.handle(), "7/23/2005 9:05 pm");
    EXPECT_EQ(dialog.date.time(), fiveAfterNine);
    dialog.date.store();
    EXPECT_EQ(field, fiveAfterNine);
    SetWindowTextA(dialog.date.handle(), "no date");
    EXPECT_EQ(dialog.date.time(), TimeValue());
    dialog.date.setTime(fiveAfterNine);
    EXPECT_EQ(dialog.date.text(), "07/23/05 09:05 pm");
}

} // namespace
