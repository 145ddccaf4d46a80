#include "lib/base/dates.h"

#include "lib/base/sourceregistration.h"

#include <limits>
#include <optional>

namespace base {
namespace {

[[maybe_unused]] const bool registered = registerSourceFile(__FILE__, RELEASE_DATE);

constexpr bool fits(std::int64_t t) {
    return t >= std::numeric_limits<std::int32_t>::min() && t <= std::numeric_limits<std::int32_t>::max();
}

/// The offset of the zone's standard time, in seconds west of UTC.
std::int32_t standardOffset() {
#ifdef _WIN32
    _tzset();
    return static_cast<std::int32_t>(_timezone);
#else
    tzset();
    return static_cast<std::int32_t>(timezone);
#endif
}

/// The result of mktime; nullopt if mktime fails or its result exceeds 32 bits.
std::optional<std::int32_t> secondsFromLocal(int year, int month, int day, int hour, int minute, int second,
                                             int isDst) {
    std::tm fields{};
    fields.tm_year = detail::wrappingSubtract(year, 1900);
    fields.tm_mon = detail::wrappingSubtract(month, 1);
    fields.tm_mday = day;
    fields.tm_hour = hour;
    fields.tm_min = minute;
    fields.tm_sec = second;
    fields.tm_isdst = isDst;
    const std::time_t t = std::mktime(&fields);
    if (t == -1 || !fits(t))
        return std::nullopt;
    return static_cast<std::int32_t>(t);
}

class SystemClock : public Clock {
public:
    TimeValue now() const override { return TimeValue::now(); }
};

} // namespace

std::chrono::milliseconds Clock::uptime() const {
    using namespace std::chrono;
    return duration_cast<milliseconds>(steady_clock::now().time_since_epoch());
}

const Clock& systemClock() {
    static const SystemClock clock;
    return clock;
}

TimeValue TimeValue::now() {
    return TimeValue(static_cast<std::int32_t>(std::time(nullptr)));
}

TimeValue TimeValue::fromLocal(int year, int month, int day, int hour, int minute, int second, int isDst) {
    return TimeValue(secondsFromLocal(year, month, day, hour, minute, second, isDst).value_or(0));
}

TimeValue TimeValue::fromUtc(int year, int month, int day, int hour, int minute, int second) {
    // Near both ends of the range, mktime can reject fields that are valid in UTC. Another day is then tried.
    for (const int shift : {0, 1, -1}) {
        // tm_isdst 0: mktime reads the fields as local standard time.
        const auto standard =
            secondsFromLocal(year, month, detail::wrappingAdd(day, shift), hour, minute, second, 0);
        if (!standard)
            continue;
        // Not a TimeSpan, which would lose the negative offset of a zone east of Greenwich.
        const std::int64_t t = std::int64_t{*standard} - std::int64_t{shift} * 86400 - standardOffset();
        return t >= 0 && fits(t) ? TimeValue(static_cast<std::int32_t>(t)) : TimeValue();
    }
    return {};
}

const std::tm* detail::localFields(TimeValue t) {
    const std::time_t seconds = t.seconds();
    return seconds < 0 ? nullptr : std::localtime(&seconds);
}

LocalTime TimeValue::local() const {
    const std::tm* const fields = detail::localFields(*this);
    if (!fields)
        return {};
    return {fields->tm_year + 1900, fields->tm_mon + 1, fields->tm_mday, fields->tm_hour,
            fields->tm_min,         fields->tm_sec,     fields->tm_wday};
}

} // namespace base
