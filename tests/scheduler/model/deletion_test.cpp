#include "scheduler/model/deletion.h"
#include "tests/support/filledentry.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace {

using scheduler::deleteEntries;
using scheduler::ScheduledProject;
using scheduler::ScheduleKind;
using scheduler::ScheduleList;
using testing::ElementsAre;

constexpr std::int32_t lowest = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t highest = std::numeric_limits<std::int32_t>::max();

/// What a deletion looks at, and a name.
struct Item {
    std::string name;
    int kind = 0;
    std::int32_t after = 0;

    friend bool operator==(const Item&, const Item&) = default;
    friend std::ostream& operator<<(std::ostream& out, const Item& item) {
        return out << item.name << " (" << item.kind << ", after " << item.after << ")";
    }
};

ScheduledProject entryOf(const Item& item) {
    ScheduledProject entry = test::filledEntry();
    entry.path = item.name;
    entry.kind = static_cast<ScheduleKind>(item.kind);
    entry.afterIndex = item.after;
    return entry;
}

std::vector<Item> deleted(const std::vector<Item>& items, const std::vector<std::size_t>& positions) {
    ScheduleList list;
    for (const Item& item : items)
        list.append(entryOf(item));
    deleteEntries(list, positions);
    std::vector<Item> left;
    for (const ScheduledProject& entry : list) {
        left.push_back({entry.path, static_cast<int>(entry.kind), entry.afterIndex});
        EXPECT_EQ(entry, entryOf(left.back())) << "another field has changed";
    }
    return left;
}

/// The rule for one entry at a time, as plainly as it can be told.
std::vector<Item> plainlyDeleted(std::vector<Item> items, std::vector<std::size_t> positions) {
    std::ranges::sort(positions);
    while (!positions.empty()) {
        const auto d = static_cast<std::int64_t>(positions.back());
        positions.pop_back();
        const auto n = static_cast<std::int64_t>(items.size());
        std::int64_t r = items[static_cast<std::size_t>(d)].after;
        if (d <= r && r != 0)
            r = r - 1;
        for (Item& item : items) {
            if (item.after == d) {
                item.after = static_cast<std::int32_t>(r);
            } else if (item.after > d) {
                const std::int64_t moved = std::int64_t{item.after} - 1;
                item.after = static_cast<std::int32_t>(moved >= n ? n : moved);
            }
        }
        items.erase(items.begin() + static_cast<std::ptrdiff_t>(d));
        for (std::size_t position = 0; position < items.size(); ++position)
            if (items[position].kind == 0 && items[position].after == static_cast<std::int64_t>(position))
                items[position].kind = 1;
    }
    return items;
}

TEST(Deletion, DeletingEntry2OfAChainLetsItsFollowerFollowItsPredecessor) {
    EXPECT_THAT(deleted({{"A", 5, 0}, {"B", 5, 0}, {"C", 0, 1}, {"D", 0, 2}}, {2}),
                ElementsAre(Item{"A", 5, 0}, Item{"B", 5, 0}, Item{"D", 0, 1}));
}

TEST(Deletion, DeletingThePredecessorAtPosition0LetsItsFollowersFollowTheNewFirst) {
    EXPECT_THAT(deleted({{"A", 5, 0}, {"B", 5, 0}, {"C", 0, 0}}, {0}),
                ElementsAre(Item{"B", 5, 0}, Item{"C", 0, 0}));
}

TEST(Deletion, AFollowerThatBecomesTheFirstRunsAtStartup) {
    EXPECT_THAT(deleted({{"A", 5, 0}, {"B", 0, 0}, {"C", 0, 1}}, {0}),
                ElementsAre(Item{"B", 1, 0}, Item{"C", 0, 0}));
}

struct Deletion {
    const char* what;
    std::vector<Item> items;
    std::vector<std::size_t> positions;
    std::vector<Item> left;
};

TEST(Deletion, Table) {
    const Deletion table[] = {
        {"nothing is deleted, and nothing mended",
         {{"A", 0, 0}, {"B", 0, 1}},
         {},
         {{"A", 0, 0}, {"B", 0, 1}}},
        {"the only entry", {{"A", 0, 0}}, {0}, {}},
        {"all, in any order", {{"A", 1, 0}, {"B", 0, 0}, {"C", 0, 1}}, {1, 0, 2}, {}},
        {"those behind move down",
         {{"A", 5, 0}, {"B", 5, 0}, {"C", 5, 0}, {"D", 0, 2}},
         {0},
         {{"B", 5, 0}, {"C", 5, 0}, {"D", 0, 1}}},
        {"those before stay", {{"A", 5, 0}, {"B", 0, 0}, {"C", 5, 0}}, {2}, {{"A", 5, 0}, {"B", 0, 0}}},
        {"a predecessor behind the deleted entry",
         {{"A", 0, 1}, {"B", 0, 3}, {"C", 5, 0}, {"D", 5, 0}},
         {1},
         {{"A", 0, 2}, {"C", 5, 0}, {"D", 5, 0}}},
        {"the deleted entry followed itself",
         {{"A", 5, 0}, {"B", 0, 1}, {"C", 0, 1}},
         {1},
         {{"A", 5, 0}, {"C", 0, 0}}},
        {"two that followed one another", {{"A", 0, 1}, {"B", 0, 0}}, {1}, {{"A", 1, 0}}},
        {"a whole chain but its ends",
         {{"A", 1, 0}, {"B", 0, 0}, {"C", 0, 1}, {"D", 0, 2}},
         {2, 1},
         {{"A", 1, 0}, {"D", 0, 0}}},
        {"two apart",
         {{"A", 5, 0}, {"B", 5, 0}, {"C", 0, 1}, {"D", 5, 0}, {"E", 0, 3}},
         {1, 3},
         {{"A", 5, 0}, {"C", 0, 0}, {"E", 0, 0}}},
        {"other kinds' references move as well",
         {{"A", 5, 0}, {"B", 3, 2}, {"C", 2, 2}},
         {0},
         {{"B", 3, 1}, {"C", 2, 1}}},
        {"another kind that names itself keeps its kind", {{"A", 5, 0}, {"B", 4, 0}}, {0}, {{"B", 4, 0}}},
        {"an unknown kind that names itself keeps its kind",
         {{"A", 5, 0}, {"B", 77, 0}},
         {0},
         {{"B", 77, 0}}},
        {"one that followed itself before runs at start-up", {{"A", 0, 0}, {"B", 5, 0}}, {1}, {{"A", 1, 0}}},
        {"a reference beyond the end comes to the former count",
         {{"A", 0, 100}, {"B", 5, 0}},
         {1},
         {{"A", 0, 2}}},
        {"a reference at the former count", {{"A", 0, 2}, {"B", 5, 0}}, {1}, {{"A", 0, 1}}},
        {"a reference just beyond it", {{"A", 0, 3}, {"B", 5, 0}}, {1}, {{"A", 0, 2}}},
        {"the highest reference", {{"A", 0, highest}, {"B", 5, 0}}, {1}, {{"A", 0, 2}}},
        {"references below 0 stay",
         {{"A", 0, -1}, {"B", 5, 0}, {"C", 0, lowest}},
         {1},
         {{"A", 0, -1}, {"C", 0, lowest}}},
        {"a follower takes over a reference below 0", {{"A", 0, 1}, {"B", 0, -7}}, {1}, {{"A", 0, -7}}},
        {"a follower takes over one beyond the end", {{"A", 0, 1}, {"B", 0, 50}}, {1}, {{"A", 0, 49}}},
    };
    for (const Deletion& row : table) {
        EXPECT_EQ(plainlyDeleted(row.items, row.positions), row.left) << "plainly: " << row.what;
        EXPECT_EQ(deleted(row.items, row.positions), row.left) << row.what;
    }
}

TEST(Deletion, ARunningEntryIsDeletedToo) {
    ScheduleList list;
    list.append(entryOf({"A", 5, 0}));
    list[0].running = 1;
    deleteEntries(list, {0});
    EXPECT_TRUE(list.empty());
}

TEST(Deletion, IsShownOnceWhenTheReferencesAreRight) {
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
    for (const Item& item : {Item{"A", 5, 0}, Item{"B", 5, 0}, Item{"C", 0, 1}, Item{"D", 0, 2}})
        list.append(entryOf(item));
    list.addObserver(view);
    deleteEntries(list, {});
    EXPECT_TRUE(view.shown.empty());
    deleteEntries(list, {0, 2});
    EXPECT_THAT(view.shown, ElementsAre(0, 0));
}

TEST(Deletion, RandomSchedulesAgainstThePlainRule) {
    constexpr unsigned seed = 20260104;
    std::mt19937 random(seed);
    const auto below = [&](std::size_t limit) { return static_cast<std::size_t>(random() % limit); };
    const std::int32_t strange[] = {-1, lowest, highest, 12, 13, 14, 1000};
    for (int round = 0; round < 8'000; ++round) {
        std::vector<Item> items(1 + below(12));
        for (std::size_t i = 0; i < items.size(); ++i) {
            items[i].name = std::string(1, static_cast<char>('A' + i));
            items[i].kind = below(3) == 0 ? static_cast<int>(below(7)) : 0;
            items[i].after = static_cast<std::int32_t>(below(items.size() + 2));
            if (below(20) == 0)
                items[i].after = strange[below(std::size(strange))];
        }
        std::vector<std::size_t> positions;
        for (std::size_t position = 0; position < items.size(); ++position)
            if (below(3) == 0)
                positions.push_back(position);
        std::ranges::shuffle(positions, random);
        ASSERT_EQ(deleted(items, positions), plainlyDeleted(items, positions))
            << "seed " << seed << ", round " << round << ", of " << testing::PrintToString(items)
            << " those at " << testing::PrintToString(positions);
    }
}

} // namespace
