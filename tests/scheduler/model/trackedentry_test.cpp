#include "scheduler/model/deletion.h"
#include "scheduler/model/trackedentry.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using scheduler::ScheduledProject;
using scheduler::TrackedEntry;

ScheduledProject named(const std::string& path) {
    ScheduledProject entry;
    entry.path = path;
    return entry;
}

class Tracked : public testing::Test {
protected:
    Tracked() {
        for (const char* path : {"a", "b", "c", "d"})
            list_.append(named(path));
    }

    std::string found(const TrackedEntry& entry) const {
        return entry.position() ? list_[*entry.position()].path : "gone";
    }

    scheduler::ScheduleList list_;
};

TEST_F(Tracked, AnEntryIsFoundAfterOthersCameBeforeAndBehindIt) {
    const TrackedEntry entry(list_, 2);
    EXPECT_EQ(found(entry), "c");
    list_.insert(2, named("x"));
    EXPECT_EQ(found(entry), "c");
    list_.insert(0, named("y"));
    EXPECT_EQ(found(entry), "c");
    list_.insert(5, named("z"));
    list_.append(named("last"));
    EXPECT_EQ(found(entry), "c");
}

TEST_F(Tracked, AnEntryIsFoundAfterOthersWentOneByOneOrTogether) {
    const TrackedEntry entry(list_, 2);
    list_.remove(3);
    EXPECT_EQ(found(entry), "c");
    list_.remove(0);
    EXPECT_EQ(found(entry), "c");
    list_.append(named("e"));
    list_.removeAll({2, 0});
    EXPECT_EQ(found(entry), "c");
}

TEST_F(Tracked, AnEntryThatIsDeletedIsGoneWhateverStandsInItsPlace) {
    const TrackedEntry entry(list_, 1);
    scheduler::deleteEntries(list_, {0, 1});
    EXPECT_EQ(found(entry), "gone");
    list_.insert(0, named("x"));
    EXPECT_EQ(found(entry), "gone");
}

TEST_F(Tracked, ANewScheduleHasNoneOfTheOldEntries) {
    const TrackedEntry cleared(list_, 0);
    const TrackedEntry replaced(list_, 3);
    list_.assign({named("a"), named("b"), named("c"), named("d")});
    EXPECT_EQ(found(replaced), "gone");
    list_.clear();
    EXPECT_EQ(found(cleared), "gone");
}

TEST_F(Tracked, AListTellsNobodyWhoIsGone) {
    { const TrackedEntry entry(list_, 3); }
    list_.remove(0);
    const TrackedEntry next(list_, 0);
    EXPECT_EQ(found(next), "b");
}

} // namespace
