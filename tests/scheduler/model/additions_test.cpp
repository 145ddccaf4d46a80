#include "scheduler/model/additions.h"
#include "tests/support/allocations.h"
#include "tests/support/fakeclock.h"
#include "tests/support/fakeschedulestore.h"
#include "tests/support/filledentry.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace {

using base::TimeSpan;
using base::TimeValue;
using scheduler::ScheduledProject;
using scheduler::ScheduleKind;
using scheduler::ScheduleList;
using testing::ElementsAre;

constexpr TimeValue noonAndSome(1'800'000'030); // 30 seconds into a minute

class AdditionsTest : public testing::Test {
protected:
    ScheduledProject once(TimeValue time) const {
        ScheduledProject entry;
        entry.path = "C:\\Sites\\news.kra";
        entry.kind = ScheduleKind::Once;
        entry.time = time;
        return entry;
    }
    bool add(const ScheduledProject& entry) { return addEntry(list, entry, state, store); }
    bool addAll(const ScheduledProject& pattern, const std::vector<std::string>& names) {
        return addEntries(list, pattern, names, state, store);
    }
    std::vector<std::string> paths() const {
        std::vector<std::string> result;
        for (const ScheduledProject& entry : list)
            result.push_back(entry.path);
        return result;
    }

    test::FakeClock clock{noonAndSome};
    scheduler::EngineState state{.startupFlag = false, .suspended = false, .clock = &clock};
    test::FakeScheduleStore store;
    ScheduleList list;
};

// The record to start from

TEST_F(AdditionsTest, TheFirstEntryRunsAtStartupAFurtherOneFollowsTheLast) {
    EXPECT_EQ(newEntryTemplate(list, clock.now()).kind, ScheduleKind::AtStartup);
    EXPECT_EQ(newEntryTemplate(list, clock.now()).afterIndex, 0);
    for (int count = 1; count <= 3; ++count) {
        list.append({});
        const ScheduledProject record = newEntryTemplate(list, clock.now());
        EXPECT_EQ(record.kind, ScheduleKind::AfterProject);
        EXPECT_EQ(record.afterIndex, count - 1);
    }
}

TEST_F(AdditionsTest, TheTemplatesOtherFieldsHaveTheirDefaults) {
    ScheduledProject expected;
    expected.kind = ScheduleKind::AtStartup;
    expected.time = TimeValue(1'800'000'060);
    EXPECT_EQ(newEntryTemplate(list, clock.now()), expected);
}

TEST_F(AdditionsTest, TheTemplatesTimeIsTheWholeMinuteAMinuteAhead) {
    struct Row {
        std::int32_t now;
        std::int32_t time;
    };
    for (const Row& row :
         {Row{1'800'000'000, 1'800'000'060}, Row{1'800'000'001, 1'800'000'060},
          Row{1'800'000'059, 1'800'000'060}, Row{1'800'000'060, 1'800'000'120}, Row{0, 60}, Row{59, 60}})
        EXPECT_EQ(newEntryTemplate(list, TimeValue(row.now)).time, TimeValue(row.time)) << row.now;
}

// One entry

TEST_F(AdditionsTest, AnAddedEntryHasItsNextRunComputedAndIsSaved) {
    const TimeValue inAnHour = clock.now() + TimeSpan::fromMinutes(60);
    list.append(test::filledEntry());
    ScheduledProject entry = once(inAnHour);
    entry.nextRun = TimeValue(7);
    EXPECT_TRUE(add(entry));

    entry.nextRun = inAnHour;
    ASSERT_EQ(list.size(), 2u);
    EXPECT_EQ(list[0], test::filledEntry());
    EXPECT_EQ(list[1], entry);
    EXPECT_THAT(store.saved, ElementsAre(ElementsAre(test::filledEntry(), entry)));
}

TEST_F(AdditionsTest, TheNextRunIsComputedFromTheStatesClockAndFlag) {
    EXPECT_TRUE(add(once(clock.now())));
    EXPECT_EQ(list[0].nextRun, TimeValue::never());

    ScheduledProject atStartup;
    atStartup.kind = ScheduleKind::AtStartup;
    add(atStartup);
    EXPECT_EQ(list[1].nextRun, TimeValue::never());
    state.startupFlag = true;
    add(atStartup);
    EXPECT_EQ(list[2].nextRun, TimeValue());
}

TEST_F(AdditionsTest, ObserversAreToldBeforeTheSave) {
    struct Observer : scheduler::ScheduleObserver {
        explicit Observer(const test::FakeScheduleStore& seen) : store(seen) {}
        const test::FakeScheduleStore& store;
        std::vector<std::size_t> positions;
        void onEntryInserted(std::size_t position, bool becameLast) override {
            EXPECT_TRUE(becameLast);
            EXPECT_TRUE(store.saved.empty());
            positions.push_back(position);
        }
        void onEntriesLoaded(std::size_t) override { ADD_FAILURE(); }
    } observer(store);
    list.append({});
    list.addObserver(observer);
    add(once(clock.now()));
    EXPECT_THAT(observer.positions, ElementsAre(1u));
}

TEST_F(AdditionsTest, AFailedSaveIsToldAndTheEntryStays) {
    store.savesSucceed = false;
    EXPECT_FALSE(add(once(clock.now())));
    EXPECT_EQ(list.size(), 1u);
    EXPECT_EQ(store.saved.size(), 1u);
}

TEST_F(AdditionsTest, WithoutMemoryNothingIsAddedOrSaved) {
    ScheduledProject entry;
    bool added = true;
    {
        const test::RefusedAllocations refused;
        added = addEntry(list, std::move(entry), state, store);
    }
    EXPECT_FALSE(added);
    EXPECT_TRUE(list.empty());
    EXPECT_TRUE(store.saved.empty());
}

// Several files at once

TEST_F(AdditionsTest, EachFileGetsACopyOfThePatternAndASaveOfItsOwn) {
    const TimeValue inAnHour = clock.now() + TimeSpan::fromMinutes(60);
    ScheduledProject pattern = test::filledEntry();
    pattern.kind = ScheduleKind::Once;
    pattern.time = inAnHour;
    EXPECT_TRUE(addAll(pattern, {"C:\\Sites\\a.kra", "b.krb", "c.krc"}));

    EXPECT_THAT(paths(), ElementsAre("C:\\Sites\\a.kra", "C:\\Sites\\\\b.krb", "C:\\Sites\\\\c.krc"));
    for (const ScheduledProject& entry : list) {
        ScheduledProject expected = pattern;
        expected.path = entry.path;
        expected.nextRun = inAnHour;
        EXPECT_EQ(entry, expected);
    }
    ASSERT_EQ(store.saved.size(), 3u);
    for (std::size_t i = 0; i < 3; ++i)
        EXPECT_EQ(store.saved[i].size(), i + 1);
}

TEST_F(AdditionsTest, LaterNamesAreJoinedToTheFirstOnesFolderByOneMoreBackslash) {
    struct Row {
        const char* first;
        const char* second;
    };
    for (const Row& row : {Row{"C:\\a.kra", "C:\\\\n"}, Row{"C:\\x\\y\\a.kra", "C:\\x\\y\\\\n"},
                           Row{"C:/x/a.kra", "C:/x/\\n"}, Row{"C:/x\\y/a.kra", "C:/x\\\\n"},
                           Row{"a.kra", "\\n"}, Row{"\\\\server\\share\\a.kra", "\\\\server\\share\\\\n"}}) {
        list.clear();
        addAll({}, {row.first, "n"});
        EXPECT_THAT(paths(), ElementsAre(row.first, row.second));
    }
}

TEST_F(AdditionsTest, NoNamesAddNothing) {
    EXPECT_TRUE(addAll({}, {}));
    EXPECT_TRUE(list.empty());
    EXPECT_TRUE(store.saved.empty());
}

TEST_F(AdditionsTest, TheSameNameTwiceIsAddedTwice) {
    addAll({}, {"C:\\a.kra", "C:\\a.kra"});
    EXPECT_THAT(paths(), ElementsAre("C:\\a.kra", "C:\\\\C:\\a.kra"));
}

TEST_F(AdditionsTest, AFailureDoesNotKeepTheOthersOut) {
    store.savesSucceed = false;
    EXPECT_FALSE(addAll({}, {"C:\\a.kra", "b.kra"}));
    EXPECT_EQ(list.size(), 2u);
    EXPECT_EQ(store.saved.size(), 2u);
}

TEST_F(AdditionsTest, AFileWithoutMemoryForItsCopyDoesNotKeepTheOthersOut) {
    constexpr std::size_t muchMemory = 10'000;
    const std::vector<std::string> names = {"C:\\a.kra", std::string(muchMemory, 'b'), "c.kra"};
    bool added = true;
    {
        const test::RefusedAllocations refused(muchMemory);
        added = addEntries(list, {}, names, state, store);
    }
    EXPECT_FALSE(added);
    EXPECT_THAT(paths(), ElementsAre("C:\\a.kra", "C:\\\\c.kra"));
    EXPECT_EQ(store.saved.size(), 2u);
}

TEST_F(AdditionsTest, AnEarlierFailureIsToldThoughTheLastOneWasSaved) {
    struct StoreThatFailsOnce : scheduler::ScheduleStore {
        unsigned saves = 0;
        bool save(const ScheduleList&) override { return ++saves > 1; }
    } failsOnce;
    const std::vector<std::string> names = {"C:\\a.kra", "b.kra"};
    EXPECT_FALSE(addEntries(list, {}, names, state, failsOnce));
    EXPECT_EQ(failsOnce.saves, 2u);
}

} // namespace
