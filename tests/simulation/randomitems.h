// Random entries, as the plain rules and as the program hold them.
#pragma once

#include "scheduler/model/scheduledproject.h"
#include "tests/simulation/dice.h"
#include "tests/simulation/plainrules.h"

namespace simulation {

/// What kinds of entries there are, and when.
struct Mix {
    int hourlyPerThousand = 30;
    int dailyPerThousand = 230;
    int pausedRingMinutes = 30; ///< no ring of entries that follow one another goes round faster
    plain::Second from = 0;     ///< entries that run once do so in this time
    plain::Second to = 0;
};

/// An entry for one of the positions 0 to count, named by its serial number.
plain::Item randomItem(Dice& dice, const Mix& mix, int serial, int position, int count);

scheduler::ScheduledProject entryFrom(const plain::Item& item);

/// Whether the entry holds what the plain rules hold.
bool same(const scheduler::ScheduledProject& entry, const plain::Item& item);

std::string stateOf(const plain::Item& item);
std::string stateOf(const scheduler::ScheduledProject& entry);

} // namespace simulation
