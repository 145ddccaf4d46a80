#pragma once

#include "lib/base/dates.h"

#include <array>
#include <cstddef>
#include <cstring>
#include <string>
#include <tuple>

namespace base {

/// `strftime` in local time and English. Empty for time 0, a negative `t` and results above 127 characters.
std::string formatPattern(TimeValue t, const char* pattern);

/// The signed number of days from `now` to `t`, as the relative phrases count them:
/// - ahead: calendar days
/// - less than 24 hours ago: 0 if today, else -1
/// - longer ago: started periods of 24 hours (24 to 48 hours ago is -2), or completed ones if the day of the
///   month is the same
/// - modulo 365: 365 days ahead or ago, on the same day of the month, is 0 again
int relativeDay(TimeValue now, TimeValue t);

/// "yesterday at %s", "today at %s", "tomorrow at %s", or the weekday, month, day, year (unless it is the
/// current one) and time of day. Empty for time 0.
std::string formatRelative(TimeValue t, TimeValue now);

namespace detail {
struct FormatText {
    constexpr FormatText() = default;
    FormatText(const std::string& text) : start(text.c_str()), length(text.size()) {}
    FormatText(const char* text) : start(text), length(std::strlen(text)) {}

    const char* start = ""; ///< zero-terminated
    std::size_t length = 0;
};

using FormatTexts = std::array<FormatText, 4>;

/// Characters to reserve: the pattern's length + `textsLength` + (width + 6) per conversion. Saturates.
std::size_t estimateFormattedLength(const char* pattern, std::size_t textsLength);

[[nodiscard]] bool formatTexts(std::string& out, const char* pattern, const FormatTexts& texts);
} // namespace detail

/// Formats one to four texts (std::string or zero-terminated) into `out`, reusing its capacity. `out` must
/// not be one of the texts. The pattern's conversions are "%s" with optional flags, width and precision.
/// Conversions beyond the last text get an empty text. False, with `out` empty, if memory runs out.
template<class... Texts>
[[nodiscard]] bool formatInto(std::string& out, const char* pattern, const Texts&... texts) {
    static_assert(sizeof...(Texts) >= 1 && sizeof...(Texts) <= std::tuple_size_v<detail::FormatTexts>);
    return detail::formatTexts(out, pattern, {texts...});
}

/// Like formatInto; empty if memory runs out.
template<class... Texts>
std::string format(const char* pattern, const Texts&... texts) {
    std::string out;
    static_cast<void>(formatInto(out, pattern, texts...));
    return out;
}

} // namespace base
