#include "scheduler/model/deletion.h"
#include "scheduler/ui/schedulerows.h"
#include "tests/support/allocations.h"
#include "tests/support/fakeclock.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <memory>
#include <new>
#include <string>
#include <vector>

namespace {

using base::TimeSpan;
using base::TimeValue;
using scheduler::ScheduleColumn;
using scheduler::ScheduledProject;

class ScheduleRows : public testing::Test {
protected:
    static ScheduledProject project(const std::string& name) {
        ScheduledProject entry;
        entry.path = "C:\\Sites\\" + name + ".kra";
        entry.kind = scheduler::ScheduleKind::Hourly;
        entry.nextRun = TimeValue::never();
        return entry;
    }

    void load(const std::vector<std::string>& names) {
        std::vector<ScheduledProject> entries;
        for (const std::string& name : names)
            entries.push_back(project(name));
        schedule_.assign(std::move(entries));
    }

    std::string projects() const {
        std::string texts;
        for (std::size_t row = 0; row < rows_.size(); ++row)
            texts += rows_.text(row, ScheduleColumn::Project) + " ";
        return texts;
    }

    test::FakeClock clock_{TimeValue::fromLocal(2026, 5, 20, 12, 0, 0, -1)};
    bool suspended_ = false;
    std::size_t stateQueries_ = 0;
    scheduler::ScheduleList schedule_;
    const std::function<scheduler::EngineState()> state_ = [this] {
        ++stateQueries_;
        return scheduler::EngineState{false, suspended_};
    };
    scheduler::ScheduleRows rows_{schedule_, state_, clock_};
};

TEST_F(ScheduleRows, TheColumnsHaveTheirHeaders) {
    EXPECT_THAT(scheduler::columnHeaders, testing::ElementsAre("Project", "Schedule", "Parameters",
                                                               "Next Run", "Last Run", "Last Result"));
}

TEST_F(ScheduleRows, AreNotNotifiedAfterTheirDestruction) {
    alignas(scheduler::ScheduleRows) std::array<std::byte, sizeof(scheduler::ScheduleRows)> place;
    std::destroy_at(new (place.data()) scheduler::ScheduleRows(schedule_, state_, clock_));
    place.fill({}); // notifying the destroyed rows would crash
    schedule_.append({});
    EXPECT_EQ(rows_.size(), 1U);
}

TEST_F(ScheduleRows, EachColumnShowsTheTextOfItsHeader) {
    ScheduledProject entry = project("news.daily");
    entry.minutes = 5;
    entry.nextRun = clock_.now() + TimeSpan::fromMinutes(1);
    entry.lastResult = "3 pages are missing";
    schedule_.assign({entry});
    EXPECT_EQ(rows_.text(0, ScheduleColumn::Project), "news.daily");
    EXPECT_EQ(rows_.text(0, ScheduleColumn::Schedule), "hourly at 5 minutes after the hour");
    EXPECT_EQ(rows_.text(0, ScheduleColumn::Parameters), "Run normally");
    EXPECT_TRUE(rows_.text(0, ScheduleColumn::NextRun).starts_with("today at "));
    EXPECT_EQ(rows_.text(0, ScheduleColumn::LastRun), "Never");
    EXPECT_EQ(rows_.text(0, ScheduleColumn::LastResult), "3 pages are missing");
    EXPECT_EQ(rows_.text(0, static_cast<ScheduleColumn>(scheduler::columnCount)), "");
    EXPECT_EQ(rows_.now(), TimeValue::fromLocal(2026, 5, 20, 12, 0, 0, -1));
}

TEST_F(ScheduleRows, TextsFollowTheClockAndTheSuspension) {
    load({"news"});
    schedule_[0].nextRun = clock_.now() + TimeSpan::fromSeconds(1);
    schedule_[0].lastRun = clock_.now();
    EXPECT_TRUE(rows_.text(0, ScheduleColumn::NextRun).starts_with("today"));
    EXPECT_TRUE(rows_.text(0, ScheduleColumn::LastRun).starts_with("today"));
    clock_.advance(TimeSpan::fromMinutes(13 * 60));
    EXPECT_EQ(rows_.text(0, ScheduleColumn::NextRun), "Now");
    EXPECT_TRUE(rows_.text(0, ScheduleColumn::LastRun).starts_with("yesterday"));
    suspended_ = true;
    EXPECT_EQ(rows_.text(0, ScheduleColumn::NextRun), "(suspended)");
}

TEST_F(ScheduleRows, SortingAgainReversesAndAnotherColumnStartsAscending) {
    load({"c", "a", "b"});
    EXPECT_EQ(projects(), "c a b ");
    EXPECT_FALSE(rows_.sortColumn());
    for (const auto& [order, ascends] : {std::pair{"a b c ", true}, {"c b a ", false}, {"a b c ", true}}) {
        rows_.sortBy(ScheduleColumn::Project);
        EXPECT_EQ(projects(), order);
        EXPECT_EQ(rows_.isAscending(), ascends);
    }
    schedule_[0].minutes = 3;
    schedule_[1].minutes = 1;
    schedule_[2].minutes = 2;
    rows_.sortBy(ScheduleColumn::Project);
    rows_.sortBy(ScheduleColumn::Schedule);
    EXPECT_EQ(projects(), "a b c ");
    EXPECT_TRUE(rows_.isAscending());
    EXPECT_EQ(schedule_[0].path, "C:\\Sites\\c.kra") << "the schedule keeps its order";
    EXPECT_EQ(rows_.entryAt(0), 1U);
    EXPECT_EQ(rows_.entryAt(2), 0U);
}

TEST_F(ScheduleRows, UpperCaseSortsBeforeLowerCaseAndBytesAreUnsigned) {
    load({"b", "B", "\xE4", "a"});
    rows_.sortBy(ScheduleColumn::Project);
    EXPECT_EQ(projects(), "B a b \xE4 ");
}

// With 16 rows or fewer, even an unstable sort would keep the order of equal texts.
TEST_F(ScheduleRows, EqualTextsKeepTheScheduleOrderInBothDirections) {
    std::vector<std::string> names;
    std::string expected;
    for (int number = 0; number < 100; ++number)
        expected += names.emplace_back(std::to_string(number * 37 % 100)) + " ";
    load(names);
    for (const bool ascends : {true, false}) {
        rows_.sortBy(ScheduleColumn::Parameters);
        EXPECT_EQ(rows_.isAscending(), ascends);
        EXPECT_EQ(projects(), expected);
    }
}

TEST_F(ScheduleRows, NextRunSortsByTextNotByTime) {
    load({"never", "due", "soon"});
    schedule_[1].nextRun = TimeValue(0);
    schedule_[2].nextRun = clock_.now() + TimeSpan::fromMinutes(1);
    rows_.sortBy(ScheduleColumn::NextRun);
    EXPECT_EQ(projects(), "never due soon "); // "(never)", "Now", "today at ..."
}

TEST_F(ScheduleRows, ASortedRowsTextsExpireWithThoseOfItsEntry) {
    load({"c", "a", "b"});
    schedule_[0].nextRun = clock_.now() + TimeSpan::fromMinutes(1);
    rows_.sortBy(ScheduleColumn::Project);
    EXPECT_EQ(rows_.textsValidUntil(2, clock_.now()), clock_.now() + TimeSpan::fromMinutes(1));
    EXPECT_GT(rows_.textsValidUntil(0, clock_.now()), clock_.now() + TimeSpan::fromMinutes(1));
}

TEST_F(ScheduleRows, ANewEntryIsTheLastRowInASortedListToo) {
    load({"c", "a", "b"});
    rows_.sortBy(ScheduleColumn::Project);
    schedule_.append(project("aa"));
    EXPECT_EQ(projects(), "a b c aa ");
    schedule_.insert(0, project("first"));
    EXPECT_EQ(projects(), "a b c aa first ");
}

TEST_F(ScheduleRows, AfterAnyRemovalTheRowsAreTheRemainingEntries) {
    // Every subset of seven entries in a sorted list.
    constexpr std::size_t count = 7;
    const std::string names = "dafbgce";
    for (unsigned subset = 0; subset < 1U << count; ++subset) {
        load({"d", "a", "f", "b", "g", "c", "e"});
        rows_.sortBy(ScheduleColumn::Project);
        std::vector<std::size_t> removed;
        std::string left;
        for (std::size_t position = 0; position < count; ++position)
            if (subset >> position & 1)
                removed.push_back(position);
            else
                left += names[position];
        scheduler::deleteEntries(schedule_, removed);
        std::ranges::sort(left);
        std::string expected;
        for (const char name : left)
            expected += std::string(1, name) + " ";
        ASSERT_EQ(projects(), expected) << subset;
    }
}

TEST_F(ScheduleRows, FollowTheRemovalOfOneEntryAndOfAll) {
    load({"c", "a", "b"});
    rows_.sortBy(ScheduleColumn::Project);
    schedule_.remove(1);
    EXPECT_EQ(projects(), "b c ");
    schedule_.clear();
    EXPECT_EQ(rows_.size(), 0U);
    schedule_.append(project("new"));
    EXPECT_EQ(projects(), "new ");
}

TEST_F(ScheduleRows, ARemovalAllocatesNoMemory) {
    load({"c", "a", "d", "b"});
    rows_.sortBy(ScheduleColumn::Project);
    const std::vector<std::size_t> descending = {2, 0};
    {
        const test::RefusedAllocations refused;
        schedule_.removeAll(descending);
        schedule_.remove(0);
    }
    EXPECT_EQ(projects(), "b ");
}

TEST_F(ScheduleRows, AnEntryIsNotInsertedWhenMemoryForItsRowRunsOut) {
    // Gives the schedule spare capacity, so that the rows created below run out of memory first.
    load({"c", "a", "b"});
    while (schedule_.size() < 1000)
        schedule_.append(project("gone"));
    while (schedule_.size() > 3)
        schedule_.remove(3);
    const scheduler::ScheduleRows rows(schedule_, state_, clock_);
    std::ptrdiff_t position = 0;
    while (position != scheduler::ScheduleList::noMemory) {
        ASSERT_LT(schedule_.size(), schedule_.capacity());
        ScheduledProject entry = project("first");
        {
            const test::RefusedAllocations refused;
            EXPECT_NO_THROW(position = schedule_.insert(0, std::move(entry)));
        }
        ASSERT_EQ(rows.size(), schedule_.size());
        EXPECT_EQ(rows.text(0, ScheduleColumn::Project), "c");
    }
    schedule_.insert(0, project("memory"));
    ASSERT_EQ(rows.size(), schedule_.size());
    EXPECT_EQ(rows.text(0, ScheduleColumn::Project), "c");
    EXPECT_EQ(rows.text(rows.size() - 1, ScheduleColumn::Project), "memory");
}

TEST_F(ScheduleRows, ALoadChangesNothingWhenMemoryForItsRowsRunsOut) {
    load({"c", "a"});
    rows_.sortBy(ScheduleColumn::Project);
    std::vector<ScheduledProject> entries(100, project("news"));
    bool loaded = true;
    {
        const test::RefusedAllocations refused;
        EXPECT_NO_THROW(loaded = schedule_.assign(std::move(entries)));
    }
    EXPECT_FALSE(loaded);
    EXPECT_EQ(projects(), "a c ");
}

TEST_F(ScheduleRows, ALoadResetsTheSortOrder) {
    load({"c", "a"});
    rows_.sortBy(ScheduleColumn::Project);
    load({"z", "y"});
    EXPECT_EQ(projects(), "z y ");
    EXPECT_FALSE(rows_.sortColumn());
}

TEST_F(ScheduleRows, FindsAProjectByPrefixFromARowAndWrapsAround) {
    load({"alpha", "beta", "Alps"});
    EXPECT_EQ(rows_.findProject("al", 0), 0U);
    EXPECT_EQ(rows_.findProject("al", 1), 2U);
    EXPECT_EQ(rows_.findProject("AL", 3), 0U);
    EXPECT_EQ(rows_.findProject("alpha", 1), 0U);
    EXPECT_FALSE(rows_.findProject("gamma", 0));
    load({});
    EXPECT_FALSE(rows_.findProject("a", 0));
}

TEST_F(ScheduleRows, ASortCreatesEachTextOnce) {
    schedule_.assign(std::vector<ScheduledProject>(500, project("news")));
    stateQueries_ = 0;
    rows_.sortBy(ScheduleColumn::NextRun);
    EXPECT_EQ(stateQueries_, 500U);
}

} // namespace
