#include "scheduler/model/deletion.h"
#include "scheduler/model/trackedreferences.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

namespace {

using scheduler::deleteEntries;
using scheduler::ScheduledProject;
using scheduler::ScheduleKind;
using scheduler::TrackedReferences;

ScheduledProject after(std::int32_t index) {
    ScheduledProject entry;
    entry.kind = ScheduleKind::AfterProject;
    entry.afterIndex = index;
    return entry;
}

/// Five entries; each but the first follows the one before it.
class TrackedReference : public testing::Test {
protected:
    TrackedReference() {
        for (std::int32_t position = 0; position < 5; ++position)
            list_.append(after(position - 1));
    }

    static ScheduledProject now(const TrackedReferences& references, ScheduledProject record,
                                std::size_t position) {
        references.bringUpToDate(record, position);
        return record;
    }

    scheduler::ScheduleList list_;
};

TEST_F(TrackedReference, FollowsEveryDeletionAsTheEntriesDo) {
    const TrackedReferences references(list_);
    const std::vector<ScheduledProject> before(list_.begin(), list_.end());
    deleteEntries(list_, {0, 2});
    EXPECT_EQ(now(references, before[4], 2), list_[2]);
    EXPECT_EQ(now(references, before[3], 1), list_[1]) << "what it followed is gone";
    list_.append(after(2));
    deleteEntries(list_, {0});
    EXPECT_EQ(now(references, before[4], 1), list_[1]);
    EXPECT_EQ(list_[1].afterIndex, 0) << "one before it, as ever";
}

TEST_F(TrackedReference, OneThatComesToFollowItselfRunsAtStartup) {
    list_[3].afterIndex = 4; // the last two wait for one another
    const TrackedReferences references(list_);
    const ScheduledProject before = list_[4];
    deleteEntries(list_, {3});
    ASSERT_EQ(list_[3].kind, ScheduleKind::AtStartup);
    EXPECT_EQ(now(references, before, 3), list_[3]);
    EXPECT_EQ(now(references, before, 7).kind, ScheduleKind::AfterProject) << "elsewhere it does not";
}

TEST_F(TrackedReference, WithoutADeletionARecordStaysAsItIs) {
    const TrackedReferences references(list_);
    list_.append(after(0));
    EXPECT_EQ(now(references, after(2), 4), after(2));
    ASSERT_TRUE(list_.assign({after(1), after(0)}));
    EXPECT_EQ(now(references, after(2), 4), after(2));
    EXPECT_EQ(now(references, after(3), 3), after(3)) << "also one that follows itself";
}

TEST_F(TrackedReference, OneThatNamedNoEntryStays) {
    const TrackedReferences references(list_);
    deleteEntries(list_, {0});
    for (const std::int32_t none : {-1, 5, 1000})
        EXPECT_EQ(now(references, after(none), 2), after(none));
}

TEST_F(TrackedReference, AListTellsNobodyWhoIsGone) {
    { const TrackedReferences references(list_); }
    const TrackedReferences next(list_);
    deleteEntries(list_, {4});
    EXPECT_EQ(now(next, after(3), 0), after(3));
}

} // namespace
