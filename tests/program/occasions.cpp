#include "tests/program/occasions.h"

#include "tests/program/scheduledriver.h"
#include "tests/support/plainentries.h"

#include <gtest/gtest.h>

#include <iostream>
#include <numeric>

namespace driver {

using plain::Item;
using plain::Second;
using scheduler::ScheduledProject;

namespace {

std::string shown(Second second) {
    const std::tm fields = plain::fieldsOf(second);
    char text[40]{};
    std::strftime(text, sizeof(text), "%Y-%m-%d %H:%M:%S", &fields);
    return text;
}

} // namespace

Occasions::Occasions(const std::vector<ScheduledProject>& entries, Second before, Second after,
                     Second lateness)
    : rules_(plain::World()), lateness_(lateness), lastRun_(entries.size()), runs_(entries.size()) {
    for (const ScheduledProject& entry : entries) {
        items_.push_back(plain::itemOf(entry));
        next_.push_back(rules_.nextRunOf(items_.back(), after));
        EXPECT_EQ(next_.back(), rules_.nextRunOf(items_.back(), before)) << "an occasion during the start";
    }
}

void Occasions::look(Second now) {
    const std::vector<ScheduledProject> saved = savedSchedule();
    if (saved.size() != items_.size())
        return; // in the middle of a save
    for (std::size_t i = 0; i < saved.size(); ++i)
        if (saved[i].lastRun.seconds() != lastRun_[i] && !saved[i].running)
            onRun(i, saved[i], now);
    for (std::size_t i = 0; i < saved.size(); ++i)
        wakeFollowers(i, saved, now);
}

void Occasions::onRun(std::size_t entry, const ScheduledProject& saved, Second now) {
    const Second start = saved.lastRun.seconds();
    const std::string name = items_[entry].path.substr(items_[entry].path.rfind('\\') + 1);
    std::cout << shown(start) << "  " << name << "\n";
    EXPECT_FALSE(items_[entry].off) << name;
    EXPECT_GE(start, next_[entry]) << name << " should not run before " << shown(next_[entry]);
    EXPECT_LE(start, next_[entry] + lateness_) << name << " should run at " << shown(next_[entry]);
    lastRun_[entry] = start;
    ++runs_[entry];
    // It ended between its start and now.
    next_[entry] = saved.nextRun.seconds();
    if (items_[entry].kind != 0) {
        EXPECT_TRUE(next_[entry] == rules_.nextRunOf(items_[entry], start) ||
                    next_[entry] == rules_.nextRunOf(items_[entry], now))
            << name << " is to run next at " << shown(next_[entry]);
    }
}

void Occasions::wakeFollowers(std::size_t entry, const std::vector<ScheduledProject>& saved, Second now) {
    const Item& item = items_[entry];
    const auto followed = static_cast<std::size_t>(item.after);
    const Second next = saved[entry].nextRun.seconds();
    // Before its first run the file still has what the test has put there.
    if (item.kind != 0 || next == next_[entry] || runs_[followed] == 0)
        return;
    EXPECT_GE(next, lastRun_[followed] + item.minutes * 60) << item.path;
    EXPECT_LE(next, now + item.minutes * 60) << item.path;
    next_[entry] = next;
}

void Occasions::expectNoneMissed(Second now) const {
    for (std::size_t i = 0; i < items_.size(); ++i)
        if (!items_[i].off) {
            EXPECT_GT(next_[i] + lateness_, now) << items_[i].path << " has not run at " << shown(next_[i]);
        }
}

bool Occasions::isAnyOverdue(Second now) const {
    for (std::size_t i = 0; i < items_.size(); ++i)
        if (!items_[i].off && next_[i] <= now)
            return true;
    return false;
}

std::size_t Occasions::runs() const {
    return std::accumulate(runs_.begin(), runs_.end(), std::size_t{0});
}

} // namespace driver
