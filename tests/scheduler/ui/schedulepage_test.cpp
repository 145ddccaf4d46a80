#include "lib/base/base.h"
#include "tests/scheduler/ui/openschedulepage.h"
#include "tests/scheduler/ui/platformcalls.h"

#include <gmock/gmock.h>

namespace {

using base::TimeValue;
using scheduler::ScheduledProject;
using scheduler::ScheduleKind;
using testing::ElementsAre;
using testing::IsEmpty;

class SchedulePage : public test::OpenSchedulePage {
protected:
    static TimeValue today(int hour, int minute, int second = 0) {
        return TimeValue::fromLocal(2026, 3, 10, hour, minute, second, -1);
    }
};

/// Records focus requests, because controls of a hidden page never get the focus.
class FocusRequests : public framework::MessageFilter {
public:
    framework::Handled filterMessage(framework::Window&, const framework::Message& message) override {
        if (message.id == WM_NEXTDLGCTL)
            asked.push_back(reinterpret_cast<HWND>(message.wParam));
        return std::nullopt;
    }
    std::vector<HWND> asked;
};

TEST_F(SchedulePage, TheListShowsOtherEntriesByNameAndStoresTheirPositions) {
    addToSchedule({"C:\\Sites\\news.kra", "run:backup.exe", "C:\\Sites\\old shop.krb"});
    record.afterIndex = 2;
    open(std::size_t{1});
    EXPECT_THAT(host->items(IDC_AFTER_PROJECT), ElementsAre("news", "old shop"));
    EXPECT_EQ(host->selected(IDC_AFTER_PROJECT), 1);
    for (const auto& [row, position] : {std::pair{0, 0}, {1, 2}}) {
        host->choose(IDC_AFTER_PROJECT, row);
        page->store();
        EXPECT_EQ(record.afterIndex, position);
    }
    open();
    EXPECT_THAT(host->items(IDC_AFTER_PROJECT), ElementsAre("news", "run:backup.exe", "old shop"))
        << "a new record can follow any entry";
    EXPECT_EQ(host->selected(IDC_AFTER_PROJECT), 2);
}

TEST_F(SchedulePage, AnInvalidPredecessorBecomesTheFirstOtherEntry) {
    addToSchedule({"a.kra", "b.kra", "c.kra"});
    for (const std::int32_t invalid : {0, 3, -1}) {
        record.afterIndex = invalid;
        open(std::size_t{0});
        EXPECT_EQ(host->selected(IDC_AFTER_PROJECT), 0) << invalid;
        EXPECT_EQ(record.afterIndex, 1) << "when the page opens";
    }
}

TEST_F(SchedulePage, WithoutOtherEntriesTheIndexIsKept) {
    addToSchedule({"a.kra"});
    record.afterIndex = 7;
    open(std::size_t{0});
    EXPECT_THAT(host->items(IDC_AFTER_PROJECT), IsEmpty());
    page->store();
    EXPECT_EQ(record.afterIndex, 7);
}

TEST_F(SchedulePage, TheFieldsOfTheChosenKindAreStored) {
    const struct {
        ScheduleKind kind;
        int minutes;
        TimeValue time;
    } rows[] = {{ScheduleKind::AfterProject, 11, today(5, 0)}, {ScheduleKind::AtStartup, 22, today(5, 0)},
                {ScheduleKind::Hourly, 33, today(5, 0)},       {ScheduleKind::Daily, 5, today(19, 30)},
                {ScheduleKind::Monthly, 5, today(6, 7)},       {ScheduleKind::Once, 5, today(22, 15)}};
    static_assert(std::size(rows) == test::allKinds.size());
    for (const auto& [kind, minutes, time] : rows) {
        record.minutes = 5;
        record.time = today(5, 0);
        open(ScheduleKind::AtStartup);
        for (const auto& [id, text] : {std::pair{IDC_AFTER_DELAY, "11"},
                                       {IDC_STARTUP_DELAY, "22"},
                                       {IDC_HOURLY_MINUTE, "33"},
                                       {IDC_DAILY_TIME, "7:30 pm"},
                                       {IDC_MONTHLY_TIME, "0607"},
                                       {IDC_ONCE_TIME, "3/10/2026 10:15 pm"}})
            host->setText(id, text);
        choose(kind);
        page->store();
        EXPECT_EQ(record.kind, kind);
        EXPECT_EQ(record.minutes, minutes) << static_cast<int>(kind);
        EXPECT_EQ(record.time, time) << static_cast<int>(kind);
    }
}

TEST_F(SchedulePage, StoresAnUntouchedRecordUnchanged) {
    addToSchedule({"a.kra", "b.kra"});
    for (const ScheduleKind kind : test::allKinds)
        for (const int minutes : {0, 1, 59, 60, 1440}) {
            record = ScheduledProject();
            record.kind = kind;
            record.minutes = kind == ScheduleKind::Hourly ? minutes % 60 : minutes;
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

TEST_F(SchedulePage, EachWeekdayHasItsOwnCheckBoxStartingWithMonday) {
    constexpr int boxes[] = {1006, 1007, 1008, 1009, 1010, 1011, 1012};
    for (std::size_t day = 0; day < 7; ++day) {
        record.weekdays = {};
        record.weekdays[day] = 1;
        open(ScheduleKind::Daily);
        for (std::size_t other = 0; other < 7; ++other)
            EXPECT_EQ(host->isChecked(boxes[other]), other == day);
        const std::size_t next = (day + 1) % 7;
        host->click(boxes[day]);
        host->click(boxes[next]);
        page->store();
        decltype(record.weekdays) wanted{};
        wanted[next] = 1;
        EXPECT_EQ(record.weekdays, wanted) << day;
    }
}

TEST_F(SchedulePage, OnlyDailyNeedsADayAndFocusesMondayWithoutOne) {
    const test::MessageBoxes boxes;
    record.weekdays = {};
    addToSchedule({"a.kra"});
    for (const ScheduleKind kind : test::allKinds) {
        open(kind);
        EXPECT_TRUE(kind == ScheduleKind::Daily || page->check()) << static_cast<int>(kind);
    }
    open(ScheduleKind::Daily);
    FocusRequests focus;
    page->addFilter(focus);
    EXPECT_FALSE(page->check());
    page->removeFilter(focus);
    ASSERT_EQ(boxes.shown.size(), 1U);
    EXPECT_EQ(boxes.shown[0].text, "You must choose at least one day of the week.");
    EXPECT_EQ(boxes.shown[0].caption, base::applicationName);
    EXPECT_EQ(boxes.shown[0].owner, page->handle());
    EXPECT_EQ(boxes.shown[0].flags & MB_TYPEMASK, UINT{MB_OK});
    EXPECT_THAT(focus.asked, ElementsAre(host->item(IDC_MONDAY)));
    host->click(IDC_SUNDAY);
    EXPECT_TRUE(page->check());
    EXPECT_EQ(boxes.shown.size(), 1U);
}

TEST_F(SchedulePage, NumbersAreClampedToTheirRanges) {
    addToSchedule({"a.kra"});
    for (const auto& [kind, id, lowest, highest, above] :
         {std::tuple{ScheduleKind::AfterProject, IDC_AFTER_DELAY, "0", "1440", "1441"},
          {ScheduleKind::AtStartup, IDC_STARTUP_DELAY, "0", "1440", "1441"},
          {ScheduleKind::Hourly, IDC_HOURLY_MINUTE, "0", "59", "60"},
          {ScheduleKind::Monthly, IDC_MONTHLY_DAY, "1", "31", "32"}}) {
        open(kind);
        for (const auto& [text, shown] :
             {std::pair{highest, highest}, {above, highest}, {lowest, lowest}, {"", lowest}}) {
            host->setText(id, text);
            test::pumpUntilIdle();
            EXPECT_EQ(host->text(id), shown) << id << " " << text;
        }
    }
}

TEST_F(SchedulePage, ANumberIsClampedBeforeOkStoresIt) {
    open(ScheduleKind::Monthly);
    host->setText(IDC_MONTHLY_DAY, "0");
    NMHDR okPressed{host->handle(), 0, PSN_APPLY};
    EXPECT_EQ(SendMessageA(page->handle(), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&okPressed)),
              PSNRET_NOERROR);
    page->store();
    EXPECT_EQ(record.dayOfMonth, 1);
}

} // namespace
