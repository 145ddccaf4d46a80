// What the user's locale and the system's code page decide. The platform answers in the program; code that
// needs nothing else of the platform stays portable by asking here.
#pragma once

#include "lib/base/dates.h"

#include <string>

struct _SYSTEMTIME; // NOLINT(bugprone-reserved-identifier): the platform's SYSTEMTIME

namespace base {

/// One character lowered by the rules of the system's ANSI code page.
char lowerCase(char character);

/// Fills the platform's record with the local calendar fields of `t`, milliseconds 0; every field is 0 for a
/// negative `t`.
void toSystemTime(TimeValue t, _SYSTEMTIME& out);

/// The date in the user's long or short form, at most 127 characters. Empty for time 0 or when the platform
/// fails.
std::string formatLocaleDate(TimeValue t, bool longForm);

/// The time of day in the user's form, at most 127 characters. Empty for time 0 or when the platform fails.
std::string formatLocaleTime(TimeValue t, bool force24Hour, bool noSeconds);

} // namespace base
