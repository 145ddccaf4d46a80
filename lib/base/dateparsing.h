// Reads dates and times that a user typed or a file holds.
//
// The texts are in the system's code page; words are compared without regard to case. Nothing is ever
// reported: a text that fits no layout gives 0. What a text leaves out reads as 0, and what lies beyond 32
// bits as the nearest number within them. A time may be off the calendar (25:61, 30 February): the runtime
// rolls it over.
#pragma once

#include "lib/base/dates.h"

#include <string_view>

namespace base {

/// Tries the layouts below in their order and gives the first result that is not 0. A text can fit an earlier
/// layout by accident: "23 jul 2005" is taken for asctime's, with 2005 as the day of the month.
TimeValue parseDateTime(std::string_view text);

/// "Sun, 06 Nov 1994 08:49:37 GMT", "Sunday, 06-Nov-94 08:49:37 GMT". Without "GMT" or "UTC" at the end the
/// text is local standard time, in summer too.
TimeValue parseInternetDate(std::string_view text);

/// "Sun Nov 6 08:49:37 1994", in local time. A one-digit day that `asctime` padded with a second blank is
/// refused.
TimeValue parseAsctimeDate(std::string_view text);

/// "7/23/2005 7:54 pm", "23.7.05", "jul 23 2005", "23 jul 2005 19:54:28", in local time of 1970 to 2038. The
/// month comes first unless it cannot be one.
TimeValue parseFreeDate(std::string_view text);

/// "9:05 pm", "17:30:00", "0930": the seconds after midnight. Not checked for range: 23:99 lies beyond the
/// day.
TimeSpan parseTimeOfDay(std::string_view text);

} // namespace base
