// The Schedule page's fields: what they show and what they store.

#include "lib/base/base.h"
#include "tests/scheduler/ui/openschedulepage.h"
#include "tests/scheduler/ui/simulatedmessagebox.h"

#include <gmock/gmock.h>

namespace {

using base::TimeValue;
using scheduler::kindCount;
using scheduler::ScheduledProject;
using scheduler::ScheduleKind;
using testing::ElementsAre;
using testing::IsEmpty;

class SchedulePage : public test::OpenSchedulePage {
protected:
    TimeValue today(int hour, int minute, int second = 0) const {
        return TimeValue::fromLocal(2026, 3, 10, hour, minute, second, -1);
    }
};

/// Which controls a page was asked to give the focus to; while it cannot be seen, none gets it.
class FocusRequests : public framework::MessageFilter {
public:
    framework::Handled filterMessage(framework::Window&, const framework::Message& message) override {
        if (message.id == WM_NEXTDLGCTL)
            asked.push_back(reinterpret_cast<HWND>(message.wParam));
        return std::nullopt;
    }
    std::vector<HWND> asked;
};

TEST_F(SchedulePage, TheListShowsTheOtherEntriesByTheirNamesEachForItsPosition) {
    addToSchedule({"C:\\Sites\\news.kra", "run:backup.exe", "C:\\Sites\\old shop.krb"});
    record.afterIndex = 2;
    open(std::size_t{1});
    EXPECT_THAT(host->itemTexts(IDC_AFTER_PROJECT), ElementsAre("news", "old shop"));
    EXPECT_EQ(host->itemData(IDC_AFTER_PROJECT, 0), 0);
    EXPECT_EQ(host->itemData(IDC_AFTER_PROJECT, 1), 2);
    EXPECT_EQ(host->selected(IDC_AFTER_PROJECT), 1);
    host->choose(IDC_AFTER_PROJECT, 0);
    page->store();
    EXPECT_EQ(record.afterIndex, 0);
}

TEST_F(SchedulePage, ForANewRecordTheListShowsAll) {
    addToSchedule({"C:\\Sites\\news.kra", "run:backup.exe"});
    record.afterIndex = 1;
    open();
    EXPECT_THAT(host->itemTexts(IDC_AFTER_PROJECT), ElementsAre("news", "run:backup.exe"));
    EXPECT_EQ(host->selected(IDC_AFTER_PROJECT), 1);
}

TEST_F(SchedulePage, AnEntryThatWaitsForNobodyOrItselfWaitsForTheFirstOther) {
    addToSchedule({"a.kra", "b.kra", "c.kra"});
    for (const std::int32_t lost : {0, 3, -1}) {
        record.afterIndex = lost;
        open(std::size_t{0});
        EXPECT_EQ(host->selected(IDC_AFTER_PROJECT), 0) << lost;
        EXPECT_EQ(record.afterIndex, 1) << "from the start";
    }
}

TEST_F(SchedulePage, WithoutOtherEntriesTheIndexIsLeft) {
    addToSchedule({"a.kra"});
    record.afterIndex = 7;
    open(std::size_t{0});
    EXPECT_EQ(host->count(IDC_AFTER_PROJECT), 0);
    page->store();
    EXPECT_EQ(record.afterIndex, 7);
}

TEST_F(SchedulePage, TheChosenKindsEditHasTheMinutes) {
    constexpr std::array<std::int32_t, kindCount> minutesOfKinds = {11, 22, 33, 5, 5, 5};
    for (const ScheduleKind kind : test::allKinds) {
        record.minutes = 5;
        open(ScheduleKind::AtStartup);
        host->setText(IDC_AFTER_DELAY, "11");
        host->setText(IDC_STARTUP_DELAY, "22");
        host->setText(IDC_HOURLY_MINUTE, "33");
        choose(kind);
        page->store();
        EXPECT_EQ(record.kind, kind);
        EXPECT_EQ(record.minutes, minutesOfKinds[static_cast<std::size_t>(kind)]);
    }
}

TEST_F(SchedulePage, TheChosenKindsEditHasTheTime) {
    const std::array<TimeValue, kindCount> timesOfKinds = {today(5, 0),   today(5, 0), today(5, 0),
                                                           today(19, 30), today(6, 7), today(22, 15)};
    for (const ScheduleKind kind : test::allKinds) {
        record.time = today(5, 0);
        open(ScheduleKind::AtStartup);
        host->setText(IDC_DAILY_TIME, "7:30 pm");
        host->setText(IDC_MONTHLY_TIME, "0607");
        host->setText(IDC_ONCE_TIME, "3/10/2026 10:15 pm");
        choose(kind);
        page->store();
        EXPECT_EQ(record.time, timesOfKinds[static_cast<std::size_t>(kind)]) << static_cast<int>(kind);
    }
}

TEST_F(SchedulePage, UntouchedItStoresWhatItLoaded) {
    addToSchedule({"a.kra", "b.kra"});
    for (const ScheduleKind kind : test::allKinds)
        for (const int minutes : {0, 1, 59, 60, 1440}) {
            record = ScheduledProject();
            record.kind = kind;
            record.minutes = record.kind == ScheduleKind::Hourly ? minutes % 60 : minutes;
            record.time = today(15, 16, 17);
            record.afterIndex = 1;
            record.weekdays = {0, 1, 0, 1, 0, 0, 1};
            record.dayOfMonth = 31;
            const ScheduledProject before = record;
            open();
            test::pumpUntilIdle();
            page->store();
            EXPECT_EQ(record, before) << static_cast<int>(kind) << " " << minutes;
        }
}

TEST_F(SchedulePage, AnOldTimeOfDayStaysToTheSecond) {
    for (const auto& [kind, id] :
         {std::pair{ScheduleKind::Daily, IDC_DAILY_TIME}, {ScheduleKind::Monthly, IDC_MONTHLY_TIME}}) {
        record.time = TimeValue::fromLocal(2001, 2, 3, 21, 5, 59, -1);
        open(kind);
        SendMessageA(host->item(id), WM_KILLFOCUS, 0, 0);
        page->store();
        EXPECT_EQ(record.time, today(21, 5, 59));
    }
}

TEST_F(SchedulePage, AnUntouchedPastTimeOfASingleRunStaysToTheSecond) {
    record.time = TimeValue::fromLocal(2001, 2, 3, 21, 5, 59, -1);
    const TimeValue before = record.time;
    open(ScheduleKind::Once);
    test::pumpUntilIdle();
    EXPECT_EQ(host->text(IDC_ONCE_TIME), "02/03/01 09:05 pm");
    page->store();
    EXPECT_EQ(record.time, before);
}

TEST_F(SchedulePage, EveryWeekdayIsItsOwnBoxMondayFirst) {
    constexpr int boxes[] = {1006, 1007, 1008, 1009, 1010, 1011, 1012};
    for (std::size_t day = 0; day < 7; ++day) {
        record.weekdays = {};
        record.weekdays[day] = 1;
        open(ScheduleKind::Daily);
        for (std::size_t other = 0; other < 7; ++other)
            EXPECT_EQ(host->isChecked(boxes[other]), other == day);
        host->click(boxes[day]);
        host->click(boxes[6 - day]);
        page->store();
        decltype(record.weekdays) wanted{};
        wanted[6 - day] = 6 - day == day ? 0 : 1;
        if (6 - day == day)
            wanted[day] = 1; // clicked twice
        EXPECT_EQ(record.weekdays, wanted) << day;
    }
}

TEST_F(SchedulePage, DailyWithoutADayIsRefusedAndTheFocusGoesToMonday) {
    record.weekdays = {};
    open(ScheduleKind::Daily);
    FocusRequests focus;
    page->addFilter(focus);
    EXPECT_FALSE(page->check());
    ASSERT_EQ(test::shownMessages.size(), 1U);
    EXPECT_EQ(test::shownMessages[0].text, "You must choose at least one day of the week.");
    EXPECT_EQ(test::shownMessages[0].caption, base::applicationName);
    EXPECT_EQ(test::shownMessages[0].owner, page->handle());
    EXPECT_EQ(test::shownMessages[0].flags & MB_TYPEMASK, static_cast<UINT>(MB_OK));
    EXPECT_THAT(focus.asked, ElementsAre(host->item(IDC_MONDAY)));
    page->removeFilter(focus);

    test::shownMessages.clear();
    host->click(IDC_SUNDAY);
    EXPECT_TRUE(page->check());
    EXPECT_THAT(test::shownMessages, IsEmpty());
}

TEST_F(SchedulePage, OtherKindsNeedNoDay) {
    test::shownMessages.clear();
    record.weekdays = {};
    addToSchedule({"a.kra"});
    for (const ScheduleKind kind : test::allKinds) {
        if (kind == ScheduleKind::Daily)
            continue;
        open(kind);
        EXPECT_TRUE(page->check()) << static_cast<int>(kind);
    }
    EXPECT_THAT(test::shownMessages, IsEmpty());
}

TEST_F(SchedulePage, TheNumbersStayInTheirRangesWhileTyped) {
    struct Typed {
        int id;
        ScheduleKind kind;
        const char* keys;
        const char* shown;
    };
    for (const Typed& typed : {
             Typed{IDC_AFTER_DELAY, ScheduleKind::AfterProject, "0", "0"},
             Typed{IDC_AFTER_DELAY, ScheduleKind::AfterProject, "1440", "1440"},
             Typed{IDC_AFTER_DELAY, ScheduleKind::AfterProject, "1441", "1440"},
             Typed{IDC_AFTER_DELAY, ScheduleKind::AfterProject, "200", "200"},
             Typed{IDC_AFTER_DELAY, ScheduleKind::AfterProject, "2000", "1440"},
             Typed{IDC_AFTER_DELAY, ScheduleKind::AfterProject, "\b", "0"},
             Typed{IDC_STARTUP_DELAY, ScheduleKind::AtStartup, "1440", "1440"},
             Typed{IDC_STARTUP_DELAY, ScheduleKind::AtStartup, "9999", "1440"},
             Typed{IDC_STARTUP_DELAY, ScheduleKind::AtStartup, "\b", "0"},
             Typed{IDC_HOURLY_MINUTE, ScheduleKind::Hourly, "59", "59"},
             Typed{IDC_HOURLY_MINUTE, ScheduleKind::Hourly, "60", "59"},
             Typed{IDC_HOURLY_MINUTE, ScheduleKind::Hourly, "123", "12"},
             Typed{IDC_HOURLY_MINUTE, ScheduleKind::Hourly, "\b", "0"},
             Typed{IDC_MONTHLY_DAY, ScheduleKind::Monthly, "31", "31"},
             Typed{IDC_MONTHLY_DAY, ScheduleKind::Monthly, "32", "31"},
             Typed{IDC_MONTHLY_DAY, ScheduleKind::Monthly, "0", "1"},
             Typed{IDC_MONTHLY_DAY, ScheduleKind::Monthly, "07", "7"},
             Typed{IDC_MONTHLY_DAY, ScheduleKind::Monthly, "\b", "1"},
             Typed{IDC_MONTHLY_DAY, ScheduleKind::Monthly, "x1y", "1"},
         }) {
        addToSchedule({"a.kra"});
        open(typed.kind);
        host->type(typed.id, typed.keys);
        EXPECT_EQ(host->text(typed.id), typed.shown) << typed.id << " " << typed.keys;
    }
}

TEST_F(SchedulePage, WhatWasTypedFasterThanThePumpIsCorrectedBeforeItIsStored) {
    open(ScheduleKind::Monthly);
    host->setText(IDC_MONTHLY_DAY, "0");
    NMHDR okPressed{host->handle(), 0, PSN_APPLY};
    EXPECT_EQ(SendMessageA(page->handle(), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&okPressed)),
              PSNRET_NOERROR);
    page->store();
    EXPECT_EQ(record.dayOfMonth, 1);
}

} // namespace
