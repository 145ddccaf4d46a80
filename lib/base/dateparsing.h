// Reads dates and times. Case is ignored; unreadable text gives 0. Missing parts count as 0, numbers are
// clamped to 32 bits, and fields outside the calendar (25:61, 30 February) roll over.
#pragma once

#include "lib/base/dates.h"

#include <string_view>

namespace base {

/// Tries the next three functions in order until one succeeds. An earlier layout can match by accident:
/// parseAsctimeDate() reads "23 jul 2005" with 2005 as the day of the month.
TimeValue parseDateTime(std::string_view text);

/// "Sun, 06 Nov 1994 08:49:37 GMT", "Sunday, 06-Nov-94 08:49:37 GMT". Without "GMT" or "UTC" at the end:
/// local standard time, even in summer.
TimeValue parseInternetDate(std::string_view text);

/// "Sun Nov 6 08:49:37 1994", local time. A day that `asctime` padded with an extra space is rejected.
TimeValue parseAsctimeDate(std::string_view text);

/// "7/23/2005 7:54 pm", "23.7.05", "jul 23 2005", "23 jul 2005 19:54:28", local time, 1970 to 2038. If month
/// and day are both numbers, the month comes first unless the first number is above 12.
TimeValue parseFreeDate(std::string_view text);

/// "9:05 pm", "17:30:00", "0930": the time since midnight. The fields' ranges are not checked (23:99).
TimeSpan parseTimeOfDay(std::string_view text);

} // namespace base
