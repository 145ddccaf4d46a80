#pragma once

#include "lib/base/dates.h"

#include <string>

namespace framework {

/// Month, day, year and time of day, such as "07/23/05 07:54 pm".
std::string dateTimeText(base::TimeValue time);

/// 0 if the text is not a date.
base::TimeValue dateTimeFromText(const std::string& text);

/// In the user's locale, with seconds only if they are not 0. Empty for time 0.
std::string timeOfDayText(base::TimeValue time);

/// The typed time of day on the day of `now`.
base::TimeValue timeOfDayFromText(const std::string& text, base::TimeValue now);

} // namespace framework
