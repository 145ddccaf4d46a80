#include "lib/base/formatting.h"

#include "lib/base/locale.h"
#include "lib/base/sourceregistration.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <exception>
#include <limits>

namespace base {
namespace {

[[maybe_unused]] const bool registered = registerSourceFile(__FILE__, RELEASE_DATE);

/// Like relativeDay(), for a `t` whose day of the month is known.
int daysUntil(TimeValue t, int dayOfMonth, TimeValue now) {
    // On purpose: 365 days ahead or ago counts as today if the day of the month is the same.
    const int days = secondsBetween(t, now) / 86400 % 365;
    // fromDays clamps a negative count to 0, so for a past time the probe is `now`: 24 to 48 hours ago is -2,
    // and "yesterday" means the last 24 hours only.
    const TimeValue probe = now + TimeSpan::fromDays(days);
    if (probe.day() == dayOfMonth)
        return days;
    return now < t ? days + 1 : days - 1;
}

} // namespace

std::string formatPattern(TimeValue t, const char* pattern) {
    const std::tm* const fields = t == TimeValue() ? nullptr : detail::localFields(t);
    if (!fields)
        return {};
    std::array<char, 128> buffer{};
    return std::string(buffer.data(), std::strftime(buffer.data(), buffer.size(), pattern, fields));
}

int relativeDay(TimeValue now, TimeValue t) {
    return daysUntil(t, t.day(), now);
}

std::string formatRelative(TimeValue t, TimeValue now) {
    if (t == TimeValue())
        return {};
    const LocalTime local = t.local();
    const std::string clock = formatLocaleTime(t, false, true);
    switch (daysUntil(t, local.day, now)) {
    case -1:
        return format("yesterday at %s", clock);
    case 0:
        return format("today at %s", clock);
    case 1:
        return format("tomorrow at %s", clock);
    default:
        break;
    }
    const char* const pattern = local.year == now.year() ? "%a %b %d" : "%a %b %d, %Y";
    return format("%s at %s", formatPattern(t, pattern), clock);
}

namespace {

/// A pattern can set huge widths, and a sum that wrapped around would reserve too little.
std::size_t saturatingAdd(std::size_t a, std::size_t b) {
    return b > std::numeric_limits<std::size_t>::max() - a ? std::numeric_limits<std::size_t>::max() : a + b;
}

} // namespace

namespace detail {

std::size_t estimateFormattedLength(const char* pattern, std::size_t textsLength) {
    std::size_t length = saturatingAdd(std::strlen(pattern), textsLength);
    const char* position = pattern;
    while ((position = std::strchr(position, '%')) != nullptr) {
        ++position;
        if (*position == '%') {
            ++position;
            continue;
        }
        // Nearly every conversion is a bare "%s". Parsing a width there would take most of this loop's time.
        long width = 0;
        if (*position != 's') {
            position += std::strspn(position, " 0.#+-%");
            width = std::strtol(position, nullptr, 10);
        }
        length = saturatingAdd(length, static_cast<std::size_t>(width) + 6);
    }
    return length;
}

bool formatTexts(std::string& out, const char* pattern, const FormatTexts& texts) {
    std::size_t textsLength = 0;
    for (const FormatText& text : texts)
        textsLength += text.length;
    const std::size_t estimate = estimateFormattedLength(pattern, textsLength);
    try {
        out.resize(estimate);
    } catch (const std::exception&) {
        out.clear();
        return false;
    }
    const int written = std::snprintf(out.data(), out.size() + 1, pattern, texts[0].start, texts[1].start,
                                      texts[2].start, texts[3].start);
    out.resize(written < 0 ? 0 : std::min(static_cast<std::size_t>(written), estimate));
    return true;
}

} // namespace detail
} // namespace base
