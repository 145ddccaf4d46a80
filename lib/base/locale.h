// Locale and code page of the platform. Native builds implement these functions in tests/native.
#pragma once

#include "lib/base/dates.h"

#include <string>

struct _SYSTEMTIME; // NOLINT(bugprone-reserved-identifier): SYSTEMTIME

namespace base {

char lowerCase(char character);

/// Local calendar fields of `t`, milliseconds 0; every field is 0 for a negative `t`.
void toSystemTime(TimeValue t, _SYSTEMTIME& out);

/// In the user's long or short format, at most 127 characters. Empty for time 0 or on failure.
std::string formatLocaleDate(TimeValue t, bool longForm);

/// In the user's format, at most 127 characters. Empty for time 0 or on failure.
std::string formatLocaleTime(TimeValue t, bool force24Hour, bool noSeconds);

} // namespace base
