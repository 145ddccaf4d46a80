// How times and composed messages are turned into text.
#pragma once

#include "lib/base/dates.h"

#include <array>
#include <cstddef>
#include <cstring>
#include <string>
#include <tuple>

namespace base {

/// The runtime's `strftime` of the local time, at most 127 characters, with the names of the runtime's
/// default (English) locale. Empty for time 0 and for a negative `t`.
std::string formatPattern(TimeValue t, const char* pattern);

/// The signed number of days from `now` to `t` as the relative phrases count them:
/// - earlier or later today is 0;
/// - less than 24 hours away, it is 1 after the next midnight and -1 before the last one;
/// - between 24 and 48 hours ago is -2;
/// - counted modulo 365, so a time a year ahead on the same day of the month is 0 again. The list's phrases
///   depend on it.
int relativeDay(TimeValue now, TimeValue t);

/// "yesterday at %s", "today at %s", "tomorrow at %s", or weekday, month and day (with the year when it is
/// not this one) and the time of day. Empty for time 0.
std::string formatRelative(TimeValue t, TimeValue now);

namespace detail {
/// One text to compose from.
struct FormatText {
    constexpr FormatText() = default;
    FormatText(const std::string& text) : start(text.c_str()), length(text.size()) {}
    FormatText(const char* text) : start(text), length(std::strlen(text)) {}

    const char* start = ""; ///< zero-terminated
    std::size_t length = 0;
};

using FormatTexts = std::array<FormatText, 4>;

/// What `format` reserves: the length of the pattern, the width of each conversion plus 6, and `textsLength`.
/// A sum beyond the type is its largest value.
std::size_t estimateFormattedLength(const char* pattern, std::size_t textsLength);

[[nodiscard]] bool formatTexts(std::string& out, const char* pattern, const FormatTexts& texts);
} // namespace detail

/// Composes `pattern`, whose conversions are "%s" with optional flags, width and precision, from one to four
/// texts (std::string or zero-terminated) into `out`, using its capacity when that suffices. A conversion
/// beyond the texts given gets an empty one. False, and an empty `out`, when memory cannot be had. `out` must
/// not be one of the texts.
template<class... Texts>
[[nodiscard]] bool formatInto(std::string& out, const char* pattern, const Texts&... texts) {
    static_assert(sizeof...(Texts) >= 1 && sizeof...(Texts) <= std::tuple_size_v<detail::FormatTexts>);
    return detail::formatTexts(out, pattern, {texts...});
}

/// As formatInto, into a fresh string, which is empty when memory cannot be had.
template<class... Texts>
std::string format(const char* pattern, const Texts&... texts) {
    std::string out;
    static_cast<void>(formatInto(out, pattern, texts...));
    return out;
}

} // namespace base
