// The real program through days that matter, its clock running fast: which occasion it keeps, and when. Each
// test has its own beginning, zone and speed, which CMakeLists.txt gives it.

#include "lib/base/registry.h"
#include "tests/program/occasions.h"
#include "tests/program/scheduledriver.h"
#include "tests/program/settableclock.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>

using base::TimeValue;
using plain::Second;
using scheduler::ScheduledProject;
using scheduler::ScheduleKind;

namespace {

const std::string programKey = "Software\\Brindlewood\\scheduler";

constexpr Second secondsOfDay = 86400;

// Less than what a change of the clock makes of an occasion, and more than the clock is turned at once.
constexpr Second lateness = 900;
constexpr std::chrono::milliseconds longestTurn(100);

Second now() {
    return TimeValue::now().seconds();
}

class RealDays : public ::testing::Test {
protected:
    void SetUp() override {
        const char* const text = std::getenv("SCHEDULER_SPEED");
        ASSERT_TRUE(text && clock_.isThere()) << "this test needs a clock of its own";
        speed_ = std::strtol(text, nullptr, 10);
        base::deleteKey(HKEY_CURRENT_USER, programKey);
        // Nobody waits for another's end: lateness is the clock's alone.
        base::writeNumber(HKEY_CURRENT_USER, programKey + "\\State\\RunMultiple", 1);
        today_ = plain::fieldsOf(now());
    }
    void TearDown() override {
        scheduler_.kill();
        driver::saveEntries({});
        base::deleteKey(HKEY_CURRENT_USER, programKey);
    }

    /// A time of this day.
    TimeValue at(int hour, int minute) const {
        const Second hourStart = plain::secondOf(today_.tm_year, today_.tm_mon, today_.tm_mday, hour);
        return TimeValue(static_cast<std::int32_t>(hourStart + minute * 60));
    }

    ScheduledProject& add(const std::string& name, ScheduleKind kind) {
        ScheduledProject entry;
        entry.path = spider_.makeProject(name + ".kra", "ms=20\n");
        entry.kind = kind;
        entries_.push_back(entry);
        return entries_.back();
    }
    void hourly(int minute) {
        add("hourly " + std::to_string(minute), ScheduleKind::Hourly).minutes = minute;
    }
    void daily(int hour, int minute) {
        add("daily " + std::to_string(hour * 100 + minute), ScheduleKind::Daily).time = at(hour, minute);
    }
    void monthly(int day, int hour, int minute) {
        ScheduledProject& entry = add("monthly " + std::to_string(day), ScheduleKind::Monthly);
        entry.dayOfMonth = day;
        entry.time = at(hour, minute);
    }
    void once(TimeValue time) { add("once", ScheduleKind::Once).time = time; }
    void after(int position, int minutes) {
        ScheduledProject& entry = add("after " + std::to_string(position), ScheduleKind::AfterProject);
        entry.afterIndex = position;
        entry.minutes = minutes;
    }

    /// Runs the program for so many hours, in which the clock on the wall is put on by `localShift` seconds.
    void live(int hours, std::size_t leastRuns, int localShift = 0) {
        const Second begin = now();
        const Second end = begin + hours * 3600;
        driver::saveEntries(entries_);
        ASSERT_TRUE(scheduler_.start("/s"));
        driver::Occasions occasions(entries_, begin, now(), lateness);
        auto turned = std::chrono::steady_clock::now();
        while (now() < end && !HasFailure()) {
            Sleep(20);
            occasions.look(now());
            const auto since = std::chrono::steady_clock::now() - turned;
            turned += since;
            if (!occasions.isAnyOverdue(now()))
                clock_.moveBy(
                    speed_ *
                    std::min(std::chrono::duration_cast<std::chrono::milliseconds>(since), longestTurn)
                        .count() /
                    1000);
        }
        occasions.expectNoneMissed(now());
        EXPECT_GE(occasions.runs(), leastRuns);
        const Second shown = (timeOfDay(end) - timeOfDay(begin) + 2 * secondsOfDay) % secondsOfDay;
        EXPECT_EQ(shown, (hours * 3600 + localShift) % secondsOfDay) << "by the clock on the wall";
    }

    static Second timeOfDay(Second second) {
        const std::tm fields = plain::fieldsOf(second);
        return (fields.tm_hour * 60 + fields.tm_min) * 60 + fields.tm_sec;
    }

    driver::SettableClock clock_;
    driver::SampleSpider spider_;
    driver::SchedulerProcess scheduler_;
    std::vector<ScheduledProject> entries_;
    std::tm today_{};
    Second speed_ = 1;
};

TEST_F(RealDays, TenEntriesThroughAWholeDay) {
    hourly(50);
    hourly(20);
    daily(3, 35);
    daily(18, 5);
    daily(12, 0);
    entries_.back().weekdays = {1, 1, 0, 1, 1, 1, 1}; // not today, a Wednesday
    monthly(10, 8, 40);
    monthly(31, 23, 0);
    once(at(14, 10));
    after(2, 90);
    daily(6, 30);
    entries_.back().disabled = 1;
    live(24, 2 * 23 + 5);
}

TEST_F(RealDays, AMonthsEnd) {
    hourly(35);
    daily(1, 5);
    monthly(31, 0, 20);
    monthly(30, 23, 10);
    monthly(1, 1, 50);
    live(4, 4 + 4);
}

TEST_F(RealDays, ALeapDay) {
    hourly(35);
    daily(0, 10);
    monthly(28, 23, 20);
    monthly(29, 0, 50);
    monthly(30, 1, 30);
    once(at(24, 55));
    live(4, 3 + 4);
}

TEST_F(RealDays, NewYear) {
    hourly(35);
    daily(0, 10);
    monthly(31, 23, 20);
    monthly(1, 0, 50);
    once(at(25, 20));
    live(4, 3 + 4);
}

class ClockChange : public RealDays {
protected:
    void SetUp() override {
        RealDays::SetUp();
        hourly(40);
        daily(0, 30);
        daily(1, 30);
        daily(2, 30);
        daily(3, 30);
        once(at(27, 10));
    }
};

TEST_F(ClockChange, Forwards) {
    live(6, 5 + 3, 3600);
}

TEST_F(ClockChange, Backwards) {
    live(6, 5 + 4, -3600);
}

} // namespace
