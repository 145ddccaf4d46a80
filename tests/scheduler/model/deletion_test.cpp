#include "scheduler/model/deletion.h"
#include "tests/scheduler/model/entries.h"
#include "tests/support/filledentry.h"
#include "tests/support/plainentries.h"
#include "tests/support/plainrules.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace test;
using scheduler::ScheduledProject;
using scheduler::ScheduleList;

struct Entry {
    std::string name;
    int kind;
    std::int32_t after;
};

std::vector<ScheduledProject> filledEntries(const std::vector<Entry>& links) {
    std::vector<ScheduledProject> entries(links.size(), filledEntry());
    for (std::size_t i = 0; i < links.size(); ++i) {
        entries[i].path = links[i].name;
        entries[i].kind = static_cast<scheduler::ScheduleKind>(links[i].kind);
        entries[i].afterIndex = links[i].after;
    }
    return entries;
}

using Positions = std::vector<std::size_t>;

template<class Entries>
std::vector<plain::Item> itemsOf(const Entries& entries) {
    std::vector<plain::Item> items;
    std::ranges::transform(entries, std::back_inserter(items), plain::itemOf);
    return items;
}

std::vector<plain::Item> remaining(std::vector<ScheduledProject> entries, const Positions& positions) {
    ScheduleList list;
    list.assign(std::move(entries));
    deleteEntries(list, positions);
    return itemsOf(list);
}

TEST(Deletion, RelinksFollowersToThePredecessor) {
    const struct {
        const char* what;
        std::vector<Entry> entries;
        Positions positions;
        std::vector<Entry> left;
    } table[] = {
        {"middle of a chain",
         {{"A", 5, 0}, {"B", 5, 0}, {"C", 0, 1}, {"D", 0, 2}},
         {2},
         {{"A", 5, 0}, {"B", 5, 0}, {"D", 0, 1}}},
        {"followers of entry 0 follow the new first entry",
         {{"A", 5, 0}, {"B", 5, 0}, {"C", 0, 0}},
         {0},
         {{"B", 5, 0}, {"C", 0, 0}}},
        {"a follower that becomes first runs at start-up",
         {{"A", 5, 0}, {"B", 0, 0}, {"C", 0, 1}},
         {0},
         {{"B", 1, 0}, {"C", 0, 0}}},
        {"without positions, nothing changes", {{"A", 0, 0}, {"B", 0, 1}}, {}, {{"A", 0, 0}, {"B", 0, 1}}},
        {"all, in any order", {{"A", 1, 0}, {"B", 0, 0}, {"C", 0, 1}}, {1, 0, 2}, {}},
        {"two entries that follow each other", {{"A", 0, 1}, {"B", 0, 0}}, {1}, {{"A", 1, 0}}},
        {"a whole chain except its ends",
         {{"A", 1, 0}, {"B", 0, 0}, {"C", 0, 1}, {"D", 0, 2}},
         {2, 1},
         {{"A", 1, 0}, {"D", 0, 0}}},
        {"references of other kinds also move",
         {{"A", 5, 0}, {"B", 3, 2}, {"C", 2, 2}},
         {0},
         {{"B", 3, 1}, {"C", 2, 1}}},
        {"an unknown kind that follows itself keeps its kind",
         {{"A", 5, 0}, {"B", 77, 0}},
         {0},
         {{"B", 77, 0}}},
        {"a reference beyond the end becomes the previous count",
         {{"A", 0, 100}, {"B", 5, 0}},
         {1},
         {{"A", 0, 2}}},
        {"negative references stay",
         {{"A", 0, -1}, {"B", 5, 0}, {"C", 0, lowest}},
         {1},
         {{"A", 0, -1}, {"C", 0, lowest}}},
    };
    for (const auto& row : table)
        EXPECT_EQ(remaining(filledEntries(row.entries), row.positions), itemsOf(filledEntries(row.left)))
            << row.what;
}

TEST(Deletion, NotifiesOnceAfterTheReferencesAreUpdated) {
    struct View : scheduler::ScheduleObserver {
        explicit View(const ScheduleList& watched) : list(watched) {}
        const ScheduleList& list;
        std::vector<std::int32_t> shown;
        void onScheduleChanged() override {
            for (const ScheduledProject& entry : list)
                shown.push_back(entry.afterIndex);
        }
    };
    ScheduleList list;
    View view(list);
    list.assign(filledEntries({{"A", 5, 0}, {"B", 5, 0}, {"C", 0, 1}, {"D", 0, 2}}));
    list.addObserver(view);
    deleteEntries(list, {});
    EXPECT_TRUE(view.shown.empty());
    deleteEntries(list, {0, 2});
    EXPECT_THAT(view.shown, testing::ElementsAre(0, 0));
}

TEST(Deletion, OfSeveralEqualsDeletingEachFromLastToFirst) {
    constexpr unsigned seed = 20260104;
    std::mt19937 random(seed);
    const auto below = [&](std::size_t limit) { return static_cast<int>(random() % limit); };
    const std::int32_t strange[] = {-1, lowest, highest, 12, 13, 14, 1000};
    for (int round = 0; round < 4'000; ++round) {
        std::vector<Entry> links(1 + random() % 12);
        for (Entry& entry : links) {
            entry.name = std::string(1, static_cast<char>('A' + (&entry - links.data())));
            entry.kind = below(3) == 0 ? below(scheduler::kindCount + 1) : 0;
            entry.after = below(20) == 0 ? strange[below(std::size(strange))] : below(links.size() + 2);
        }
        Positions positions;
        for (std::size_t position = 0; position < links.size(); ++position)
            if (below(3) == 0)
                positions.push_back(position);
        std::ranges::shuffle(positions, random);
        std::vector<plain::Item> expected = itemsOf(filledEntries(links));
        plain::removeAll(expected, {positions.begin(), positions.end()});
        ASSERT_EQ(remaining(filledEntries(links), positions), expected)
            << "seed " << seed << ", round " << round << ", positions " << testing::PrintToString(positions);
    }
}

} // namespace
