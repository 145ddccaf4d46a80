#include "tests/scheduler/ui/openschedulepage.h"

namespace {

using base::TimeSpan;
using base::TimeValue;
using scheduler::ScheduleKind;
using test::allKinds;
using test::buttonOf;
using test::unknownKind;

class ScheduleKinds : public test::OpenSchedulePage {
protected:
    void SetUp() override { addToSchedule({"a.kra", "b.kra"}); }

    int firstTabStop() const { return GetDlgCtrlID(GetNextDlgTabItem(page->handle(), nullptr, FALSE)); }

    void expectOnlyControlsOf(ScheduleKind kind) const {
        for (const ScheduleKind other : allKinds) {
            EXPECT_EQ(host->isChecked(buttonOf(other)), other == kind) << buttonOf(other);
            for (const int id : test::shownOnlyWith(other)) {
                EXPECT_EQ(host->isVisible(id), other == kind) << id;
                EXPECT_EQ(host->isEnabled(id), other == kind) << id;
            }
        }
        EXPECT_TRUE(host->isVisible(IDC_AFTER_PROJECT));
        EXPECT_EQ(host->isEnabled(IDC_AFTER_PROJECT), kind == ScheduleKind::AfterProject);
    }
};

TEST_F(ScheduleKinds, SwitchingBetweenAnyTwoShowsTheControlsOfTheChosenOne) {
    for (const ScheduleKind from : allKinds)
        for (const ScheduleKind to : allKinds) {
            open(from);
            expectOnlyControlsOf(from);
            choose(to);
            expectOnlyControlsOf(to);
            choose(from);
            expectOnlyControlsOf(from);
        }
}

TEST_F(ScheduleKinds, KeepTheirInputWhileAnotherOneIsChosen) {
    open(ScheduleKind::AfterProject);
    // The page replaces the time of a single run that has passed.
    const auto typed = [](int id) { return "3/10/2030 4:" + std::to_string(id % 60); };
    for (const ScheduleKind kind : allKinds)
        for (const int id : test::shownOnlyWith(kind))
            host->setText(id, typed(id));
    host->click(IDC_TUESDAY);
    for (const ScheduleKind kind : allKinds)
        choose(kind);
    for (const ScheduleKind kind : allKinds)
        for (const int id : test::shownOnlyWith(kind))
            EXPECT_EQ(host->text(id), typed(id));
    EXPECT_FALSE(host->isChecked(IDC_TUESDAY));
    EXPECT_TRUE(host->isChecked(IDC_MONDAY));
}

TEST_F(ScheduleKinds, AfterProjectNeedsAnotherEntry) {
    schedule.clear();
    open(ScheduleKind::AtStartup);
    EXPECT_FALSE(host->isEnabled(IDC_KIND_AFTER_PROJECT));
    open(ScheduleKind::AfterProject);
    EXPECT_FALSE(host->isEnabled(IDC_KIND_AFTER_PROJECT));
    EXPECT_TRUE(host->isChecked(IDC_KIND_AFTER_PROJECT)) << "still shows the kind of the record";
    EXPECT_EQ(firstTabStop(), IDC_KIND_STARTUP) << "the chosen one is disabled";
    addToSchedule({"a.kra"});
    open(ScheduleKind::AtStartup);
    EXPECT_TRUE(host->isEnabled(IDC_KIND_AFTER_PROJECT));
    open(std::size_t{0});
    EXPECT_FALSE(host->isEnabled(IDC_KIND_AFTER_PROJECT)) << "the edited entry does not count";
}

TEST_F(ScheduleKinds, AreReachableByTheTabKey) {
    open(ScheduleKind::Daily);
    EXPECT_EQ(firstTabStop(), IDC_KIND_DAILY);
    open(unknownKind);
    EXPECT_EQ(firstTabStop(), IDC_KIND_AFTER_PROJECT) << "none is chosen";
    choose(ScheduleKind::Monthly);
    EXPECT_EQ(firstTabStop(), IDC_KIND_MONTHLY);
}

TEST_F(ScheduleKinds, AnUnknownOneIsKeptAndChecksNoButton) {
    record.minutes = 77;
    record.time = clock.now();
    open(unknownKind);
    expectOnlyControlsOf(unknownKind);
    page->store();
    EXPECT_EQ(record.kind, unknownKind);
    EXPECT_EQ(record.minutes, 77);
    EXPECT_EQ(record.time, clock.now());
    choose(ScheduleKind::Daily);
    expectOnlyControlsOf(ScheduleKind::Daily);
    page->store();
    EXPECT_EQ(record.kind, ScheduleKind::Daily);
}

TEST_F(ScheduleKinds, APastSingleRunBecomesAMinuteAheadWhenAnotherKindIsChosen) {
    record.time = clock.now() - TimeSpan::fromDays(3);
    open(ScheduleKind::Once);
    test::pumpUntilIdle();
    EXPECT_EQ(host->text(IDC_ONCE_TIME), "03/07/26 12:34 pm") << "a loaded single run is not changed";
    for (const ScheduleKind other : allKinds) {
        if (other == ScheduleKind::Once)
            continue;
        for (const char* const text : {"03/07/26 12:34 pm", "no date", ""}) {
            choose(ScheduleKind::Once);
            host->setText(IDC_ONCE_TIME, text);
            test::pumpUntilIdle();
            EXPECT_EQ(host->text(IDC_ONCE_TIME), text);
            choose(other);
            EXPECT_EQ(host->text(IDC_ONCE_TIME), "03/10/26 12:35 pm");
        }
    }
}

TEST_F(ScheduleKinds, AProposedSingleRunIsRenewedWhenItIsChosenLater) {
    record.time = TimeValue();
    open(ScheduleKind::Daily);
    EXPECT_EQ(host->text(IDC_ONCE_TIME), "03/10/26 12:35 pm");
    clock.advance(TimeSpan::fromMinutes(2)); // without an idle pass
    choose(ScheduleKind::Once);
    EXPECT_EQ(host->text(IDC_ONCE_TIME), "03/10/26 12:37 pm");
    clock.advance(TimeSpan::fromMinutes(2));
    test::pumpUntilIdle();
    EXPECT_EQ(host->text(IDC_ONCE_TIME), "03/10/26 12:37 pm") << "once chosen, it is not changed";
}

TEST_F(ScheduleKinds, AFutureSingleRunIsKeptUntilItHasPassed) {
    record.time = clock.now() + TimeSpan::fromDays(2);
    open(ScheduleKind::Daily);
    choose(ScheduleKind::Hourly);
    EXPECT_EQ(host->text(IDC_ONCE_TIME), "03/12/26 12:34 pm");
    clock.advance(TimeSpan::fromDays(2) + TimeSpan::fromMinutes(5));
    test::pumpUntilIdle();
    EXPECT_EQ(host->text(IDC_ONCE_TIME), "03/12/26 12:40 pm");
}

} // namespace
