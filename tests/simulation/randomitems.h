// Random entries.
#pragma once

#include "tests/simulation/dice.h"
#include "tests/support/plainrules.h"

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

} // namespace simulation
