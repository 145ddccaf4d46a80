// Simulates a whole day and the nights of clock changes. The tests set the clock to each hour, to a minute
// before each run and to a second after each run.

#include "tests/program/programtest.h"
#include "tests/program/settableclock.h"
#include "tests/support/plainentries.h"

#include <algorithm>
#include <ctime>
#include <set>

using base::TimeSpan;
using base::TimeValue;
using scheduler::ScheduledProject;
using scheduler::ScheduleKind;

namespace {

// Longer than a busy machine delays a run. A run that breaks the rules would be off by half an hour or more.
constexpr TimeSpan lateness = TimeSpan::fromMinutes(15);

class RealDays : public driver::ProgramTest {
protected:
    void SetUp() override {
        ProgramTest::SetUp();
        // Entries run side by side, so that none waits for another.
        base::writeNumber(HKEY_CURRENT_USER, driver::stateKey + "\\RunMultiple", 1);
    }

    static std::tm fields(int year, int month, int day, int hour, int minute) {
        std::tm time{};
        time.tm_year = year - 1900;
        time.tm_mon = month - 1;
        time.tm_mday = day;
        time.tm_hour = hour;
        time.tm_min = minute;
        time.tm_isdst = -1;
        std::mktime(&time);
        return time;
    }

    void beginAt(int year, int month, int day, int hour, int minute) {
        entries_.clear();
        expected_.clear();
        day_ = fields(year, month, day, 0, 0);
        begin_ = at(hour, minute);
    }
    /// Local time; hours above 23 are on the next day.
    TimeValue at(int hour, int minute) const {
        std::tm time = fields(day_.tm_year + 1900, day_.tm_mon + 1, day_.tm_mday, hour, minute);
        return TimeValue(static_cast<std::int32_t>(std::mktime(&time)));
    }

    using Times = std::vector<TimeValue>;

    ScheduledProject& add(ScheduleKind kind, const Times& runs) {
        ScheduledProject entry;
        entry.path = spider_.makeProject(std::to_string(entries_.size()) + ".kra");
        entry.kind = kind;
        entries_.push_back(entry);
        expected_.push_back(runs);
        return entries_.back();
    }
    void hourly(int minute, int firstHour, int count) {
        Times runs;
        for (int i = 0; i < count; ++i)
            runs.push_back(at(firstHour, minute) + TimeSpan::fromMinutes(60 * i));
        add(ScheduleKind::Hourly, runs).minutes = minute;
    }
    ScheduledProject& daily(int hour, int minute, const Times& runs) {
        ScheduledProject& entry = add(ScheduleKind::Daily, runs);
        entry.time = at(hour, minute);
        return entry;
    }
    void monthly(int day, int hour, int minute, const Times& runs) {
        ScheduledProject& entry = add(ScheduleKind::Monthly, runs);
        entry.dayOfMonth = day;
        entry.time = at(hour, minute);
    }
    void once(TimeValue time) { add(ScheduleKind::Once, {time}).time = time; }

    /// Computes the expected runs, because C runtimes treat skipped and repeated hours differently.
    void expectRunsByTheRules(int hours) {
        const TimeValue end = begin_ + TimeSpan::fromMinutes(60 * hours);
        for (std::size_t i = 0; i < entries_.size(); ++i) {
            const plain::Item item = plain::itemOf(entries_[i]);
            const auto runAfter = [&](TimeValue time) {
                const plain::Second now = time.seconds();
                return TimeValue(static_cast<std::int32_t>(plain::nextRunOf(item, now, now, false)));
            };
            for (TimeValue run = runAfter(begin_); run <= end; run = runAfter(run + TimeSpan::fromSeconds(1)))
                expected_[i].push_back(run);
        }
    }

    void simulate(int hours) {
        clock_.moveTo(begin_);
        ASSERT_NO_FATAL_FAILURE(startWith(entries_, "/s"));
        std::set<TimeValue> moments;
        for (int hour = 1; hour <= hours; ++hour)
            moments.insert(begin_ + TimeSpan::fromMinutes(60 * hour));
        for (const Times& runs : expected_)
            for (const TimeValue run : runs)
                // Not at the run itself: a daily or monthly run that ends within that second is due again.
                moments.insert({run - TimeSpan::fromMinutes(1), run + TimeSpan::fromSeconds(1)});
        std::vector<Times> seen(entries_.size());
        for (const TimeValue moment : moments) {
            if (moment > TimeValue::now())
                clock_.moveTo(moment);
            scheduler_.tick();
            ASSERT_TRUE(driver::waitUntil([&] { return recordRuns(seen, moment); })) << moment.seconds();
        }
        for (std::size_t entry = 0; entry < seen.size(); ++entry) {
            SCOPED_TRACE(entries_[entry].path);
            ASSERT_EQ(seen[entry].size(), expected_[entry].size());
            for (std::size_t i = 0; i < seen[entry].size(); ++i) {
                EXPECT_GE(seen[entry][i], expected_[entry][i]);
                EXPECT_LE(seen[entry][i], expected_[entry][i] + lateness);
            }
        }
    }

    driver::SettableClock clock_;
    TimeValue begin_;

private:
    /// Appends new runs of the saved schedule to `seen`; true when `seen` has all runs due by `now`.
    bool recordRuns(std::vector<Times>& seen, TimeValue now) const {
        const auto saved = driver::savedSchedule();
        if (saved.size() != entries_.size())
            return false;
        bool done = true;
        for (std::size_t i = 0; i < saved.size(); ++i) {
            const TimeValue last = seen[i].empty() ? TimeValue() : seen[i].back();
            if (saved[i].lastRun != last)
                seen[i].push_back(saved[i].lastRun);
            const auto due = std::ranges::count_if(expected_[i], [&](TimeValue run) { return run <= now; });
            done = done && seen[i].size() >= static_cast<std::size_t>(due);
        }
        return done;
    }

    driver::SampleSpider spider_;
    std::tm day_{};
    std::vector<ScheduledProject> entries_;
    std::vector<Times> expected_;
};

TEST_F(RealDays, EveryKindRunsOnTimeThroughAWholeDay) {
    beginAt(2026, 6, 10, 0, 3);
    hourly(50, 0, 24);
    daily(3, 35, {at(3, 35)});
    daily(18, 5, {at(18, 5)});
    daily(12, 0, {}).weekdays = {1, 1, 0, 1, 1, 1, 1}; // not today, a Wednesday
    monthly(10, 8, 40, {at(8, 40)});
    monthly(31, 23, 0, {});
    once(at(14, 10));
    ScheduledProject& follower = add(ScheduleKind::AfterProject, {at(5, 5)});
    follower.afterIndex = 1;
    follower.minutes = 90;
    daily(6, 30, {}).disabled = 1;
    simulate(24);
}

TEST_F(RealDays, TheNightOfAClockChangeFollowsTheRules) {
    int changes = 0;
    const auto offset = [](int day) { return fields(2026, 1, day, 12, 0).tm_isdst; };
    for (int day = 2; day <= 365; ++day) {
        if (offset(day) == offset(day - 1))
            continue;
        ++changes;
        beginAt(2026, 1, day - 1, 22, 15);
        add(ScheduleKind::Hourly, {}).minutes = 40;
        for (int hour = 0; hour < 4; ++hour)
            daily(hour, 30, {});
        add(ScheduleKind::Once, {}).time = at(27, 10);
        expectRunsByTheRules(6);
        ASSERT_NO_FATAL_FAILURE(simulate(6));
    }
    EXPECT_EQ(changes, 2) << "the zone does not change its clock twice a year";
}

} // namespace
