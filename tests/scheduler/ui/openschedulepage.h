#pragma once

#include "scheduler/ui/schedulepage.h"
#include "tests/scheduler/ui/pagehost.h"
#include "tests/support/fakeclock.h"
#include "tests/support/schedulekinds.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <vector>

namespace test {

class OpenSchedulePage : public testing::Test {
protected:
    void open(std::optional<std::size_t> position = std::nullopt) {
        page = std::make_unique<scheduler::SchedulePage>(record, schedule, position, clock);
        host = std::make_unique<PageHost>(*page);
        ASSERT_NE(page->handle(), nullptr);
    }

    void open(scheduler::ScheduleKind kind) {
        record.kind = kind;
        open();
    }

    void addToSchedule(const std::vector<std::string>& paths) {
        for (const std::string& path : paths) {
            scheduler::ScheduledProject entry;
            entry.path = path;
            schedule.append(entry);
        }
    }

    void choose(scheduler::ScheduleKind kind) const { host->click(buttonOf(kind)); }

    FakeClock clock{base::TimeValue::fromLocal(2026, 3, 10, 12, 34, 56, -1)};
    scheduler::ScheduleList schedule;
    scheduler::ScheduledProject record;
    std::unique_ptr<PageHost> host; // destroyed after its page
    std::unique_ptr<scheduler::SchedulePage> page;
};

} // namespace test
