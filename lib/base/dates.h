// Points in time and time spans: signed 32-bit counts of seconds, as in the schedule file and the platform's
// 32-bit time_t. Arithmetic wraps around. Calendar fields are in local time.
#pragma once

#include <chrono>
#include <compare>
#include <cstdint>
#include <ctime>

namespace base {

class TimeSpan {
public:
    constexpr TimeSpan() = default;

    /// n is clamped to 0..25000. 24856 days and more wrap around. To go back in time, subtract a span.
    static constexpr TimeSpan fromDays(std::int32_t n);

    /// Exact for s >= 0. A negative count keeps only its whole days.
    static constexpr TimeSpan fromSeconds(std::int32_t s);

    static constexpr TimeSpan fromMinutes(std::int32_t n);

    constexpr std::int32_t seconds() const { return seconds_; }

    friend constexpr auto operator<=>(TimeSpan, TimeSpan) = default; // NOLINT(modernize-use-nullptr)
    friend constexpr TimeSpan operator+(TimeSpan a, TimeSpan b);

private:
    constexpr explicit TimeSpan(std::int32_t seconds) : seconds_(seconds) {}

    std::int32_t seconds_ = 0;
};

struct LocalTime {
    int year = 0;
    int month = 0; ///< 1..12
    int day = 0;
    int hour = 0;
    int minute = 0;
    int second = 0;
    int dayOfWeek = 0; ///< from Sunday = 0

    friend bool operator==(const LocalTime&, const LocalTime&) = default;
};

/// Seconds since 1970-01-01 00:00:00 UTC. 0: no time. A negative value is invalid; its fields are 0.
class TimeValue {
public:
    constexpr TimeValue() = default;
    constexpr explicit TimeValue(std::int32_t seconds) : seconds_(seconds) {}

    static constexpr TimeValue never() { return TimeValue(0x7FFFFFFF); }

    static TimeValue now();

    /// Like `mktime`: fields out of range roll over; isDst is 0, 1 or -1 (the runtime decides). 0 on failure.
    static TimeValue fromLocal(int year, int month, int day, int hour, int minute, int second, int isDst);

    /// Fields out of range roll over. 0 before 1970-01-01 00:00:00 and after 2038-01-19 03:14:07.
    static TimeValue fromUtc(int year, int month, int day, int hour, int minute, int second);

    constexpr std::int32_t seconds() const { return seconds_; }

    LocalTime local() const;

    // Each call converts again. For several fields, use local().
    int year() const { return local().year; }
    int month() const { return local().month; }
    int day() const { return local().day; }
    int hour() const { return local().hour; }
    int minute() const { return local().minute; }
    int second() const { return local().second; }
    int dayOfWeek() const { return local().dayOfWeek; }

    // NOLINTNEXTLINE(modernize-use-nullptr): the check mistakes the comparison's 0 for a null pointer
    friend constexpr auto operator<=>(TimeValue, TimeValue) = default;
    friend constexpr TimeValue operator+(TimeValue t, TimeSpan span);
    friend constexpr TimeValue operator-(TimeValue t, TimeSpan span);

    /// The seconds from b to a. Not a TimeSpan, because they are negative if a is earlier.
    friend constexpr std::int32_t secondsBetween(TimeValue a, TimeValue b);

private:
    std::int32_t seconds_ = 0;
};

class Clock {
public:
    virtual ~Clock() = default;
    virtual TimeValue now() const = 0;

    /// Time since a fixed moment, for measuring durations. Setting the system's clock does not affect it.
    virtual std::chrono::milliseconds uptime() const;
};

const Clock& systemClock();

namespace detail {
/// `t` in local time, valid until the next call; null for a negative `t`.
const std::tm* localFields(TimeValue t);

// Unsigned, because signed overflow is undefined.
constexpr std::int32_t wrappingAdd(std::int32_t a, std::int32_t b) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) + static_cast<std::uint32_t>(b));
}
constexpr std::int32_t wrappingSubtract(std::int32_t a, std::int32_t b) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) - static_cast<std::uint32_t>(b));
}
constexpr std::int32_t wrappingMultiply(std::int32_t a, std::int32_t b) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) * static_cast<std::uint32_t>(b));
}
constexpr std::int32_t clamp(std::int32_t value, std::int32_t low, std::int32_t high) {
    return value < low ? low : value > high ? high : value;
}
} // namespace detail

constexpr TimeSpan TimeSpan::fromDays(std::int32_t n) {
    return TimeSpan(detail::wrappingMultiply(detail::clamp(n, 0, 25000), 86400));
}

constexpr TimeSpan TimeSpan::fromSeconds(std::int32_t s) {
    using detail::clamp;
    const std::int32_t days = s / 86400;
    const std::int32_t hours = clamp((s - days * 86400) / 3600, 0, 23) + 24 * days;
    const std::int32_t minutes = clamp((s - hours * 3600) / 60, 0, 59);
    const std::int32_t wholeMinutes = (hours * 60 + minutes) * 60;
    return TimeSpan(wholeMinutes + clamp(s - wholeMinutes, 0, 59));
}

constexpr TimeSpan TimeSpan::fromMinutes(std::int32_t n) {
    return TimeSpan(detail::wrappingMultiply(n, 60));
}

constexpr TimeSpan operator+(TimeSpan a, TimeSpan b) {
    return TimeSpan(detail::wrappingAdd(a.seconds_, b.seconds_));
}

constexpr TimeValue operator+(TimeValue t, TimeSpan span) {
    return TimeValue(detail::wrappingAdd(t.seconds_, span.seconds()));
}

constexpr TimeValue operator-(TimeValue t, TimeSpan span) {
    return TimeValue(detail::wrappingSubtract(t.seconds_, span.seconds()));
}

constexpr std::int32_t secondsBetween(TimeValue a, TimeValue b) {
    return detail::wrappingSubtract(a.seconds_, b.seconds_);
}

} // namespace base
