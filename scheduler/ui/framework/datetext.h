// How dates and times of day stand in the fields that they are typed into.
#pragma once

#include "lib/base/dates.h"

#include <string>

namespace framework {

/// Month, day, year and the time of day to the minute, such as "07/23/05 07:54 pm".
std::string dateTimeText(base::TimeValue time);

/// The instant that a text names; 0 when it is no date.
base::TimeValue dateTimeFromText(const std::string& text);

/// The time of day in the user's form, with its seconds only when there are any. Empty for time 0.
std::string timeOfDayText(base::TimeValue time);

/// The typed time of day on the day of `now`.
base::TimeValue timeOfDayFromText(const std::string& text, base::TimeValue now);

} // namespace framework
