#include "scheduler/model/additions.h"
#include "tests/scheduler/model/entries.h"
#include "tests/support/fakeclock.h"
#include "tests/support/fakeschedulestore.h"
#include "tests/support/filledentry.h"
#include "tests/support/redrawlog.h"

#include <gmock/gmock.h>

#include <string>
#include <utility>
#include <vector>

namespace {

using namespace test;
using base::TimeSpan;
using base::TimeValue;
using scheduler::ScheduledProject;
using testing::ElementsAre;

class Additions : public testing::Test {
protected:
    void addAll(const ScheduledProject& pattern, const std::vector<std::string>& names) {
        addEntries(list, pattern, names, state, clock, store);
    }

    FakeClock clock{TimeValue(1'800'000'030)}; // 30 seconds past the minute
    const TimeValue inAnHour = clock.now() + TimeSpan::fromMinutes(60);
    scheduler::EngineState state;
    EventLog log;
    FakeScheduleStore store{&log};
    scheduler::ScheduleList list;
};

TEST_F(Additions, NewEntryRunsAtStartupOrAfterTheLastEntry) {
    ScheduledProject expected;
    expected.kind = scheduler::ScheduleKind::AtStartup;
    expected.time = TimeValue(1'800'000'060);
    EXPECT_EQ(newEntryTemplate(list, clock.now()), expected);
    expected.kind = scheduler::ScheduleKind::AfterProject;
    for (int last = 0; last < 3; ++last) {
        list.append({});
        expected.afterIndex = last;
        EXPECT_EQ(newEntryTemplate(list, clock.now()), expected);
    }
}

TEST_F(Additions, NewEntryStartsAtTheNextWholeMinute) {
    const std::pair<std::int32_t, std::int32_t> rows[] = {{1'800'000'000, 1'800'000'060},
                                                          {1'800'000'001, 1'800'000'060},
                                                          {1'800'000'059, 1'800'000'060},
                                                          {1'800'000'060, 1'800'000'120},
                                                          {0, 60}};
    for (const auto& [now, time] : rows)
        EXPECT_EQ(newEntryTemplate(list, TimeValue(now)).time, TimeValue(time)) << now;
}

TEST_F(Additions, ComputeTheNextRunAndSaveAllEntries) {
    list.append(filledEntry());
    const RedrawLog redraws(list, log);
    ScheduledProject entry = once(inAnHour);
    entry.nextRun = TimeValue(7);
    addEntry(list, entry, state, clock, store);

    entry.nextRun = inAnHour;
    EXPECT_THAT(entriesOf(list), ElementsAre(filledEntry(), entry));
    EXPECT_THAT(store.saved, ElementsAre(ElementsAre(filledEntry(), entry)));
    EXPECT_THAT(log, ElementsAre("redraw", "save"));
}

TEST_F(Additions, ComputeTheNextRunWithTheClockAndTheStartupFlag) {
    addEntry(list, once(clock.now()), state, clock, store);
    addEntry(list, ofKind(1), state, clock, store);
    state.startupFlag = true;
    addEntry(list, ofKind(1), state, clock, store);
    EXPECT_EQ(list[0].nextRun, TimeValue::never());
    EXPECT_EQ(list[1].nextRun, TimeValue::never());
    EXPECT_EQ(list[2].nextRun, TimeValue());
}

TEST_F(Additions, SeveralFilesCopyTheTemplateSaveEachTimeAndRedrawOnce) {
    const RedrawLog redraws(list, log);
    ScheduledProject pattern = filledEntry();
    pattern.kind = scheduler::ScheduleKind::Once;
    pattern.time = inAnHour;
    addAll(pattern, {});
    EXPECT_TRUE(log.empty());
    addAll(pattern, {"C:\\Sites\\a.kra", "b.krb", "c.krc"});

    EXPECT_THAT(pathsOf(list), ElementsAre("C:\\Sites\\a.kra", "C:\\Sites\\\\b.krb", "C:\\Sites\\\\c.krc"));
    for (const ScheduledProject& entry : list) {
        pattern.path = entry.path;
        pattern.nextRun = inAnHour;
        EXPECT_EQ(entry, pattern);
    }
    EXPECT_THAT(store.saved, ElementsAre(testing::SizeIs(1), testing::SizeIs(2), testing::SizeIs(3)));
    EXPECT_THAT(log, ElementsAre("save", "save", "save", "redraw"));
}

TEST_F(Additions, LaterNamesGetTheFirstFilesFolderAndAnExtraBackslash) {
    const std::pair<const char*, const char*> rows[] = {{"C:\\a.kra", "C:\\\\n"},
                                                        {"C:/x/a.kra", "C:/x/\\n"},
                                                        {"C:/x\\y/a.kra", "C:/x\\\\n"},
                                                        {"a.kra", "\\n"}};
    for (const auto& [first, second] : rows) {
        list.clear();
        addAll({}, {first, "n"});
        EXPECT_THAT(pathsOf(list), ElementsAre(first, second));
    }
}

} // namespace
