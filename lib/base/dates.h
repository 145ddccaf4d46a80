// Points in time and spans of time as the whole program stores, compares and adds them.
//
// Both are signed 32-bit counts of seconds, and their arithmetic wraps around: the width is that of the
// schedule file and of the platform's 32-bit time_t. Calendar fields are those of local time.
#pragma once

#include <chrono>
#include <compare>
#include <cstdint>
#include <ctime>

namespace base {

/// A number of seconds to add to or subtract from a TimeValue.
class TimeSpan {
public:
    constexpr TimeSpan() = default;

    /// n * 86400 seconds, with n clamped to 0..25000 first: a negative number of days cannot be expressed, so
    /// whoever goes back in time subtracts a span. 24856 days and more wrap around.
    static constexpr TimeSpan fromDays(std::int32_t n);

    /// Exact for s >= 0. A negative count is taken apart into days, hours, minutes and seconds whose clamping
    /// drops all but whole days.
    static constexpr TimeSpan fromSeconds(std::int32_t s);

    /// n * 60 seconds, wrapping around.
    static constexpr TimeSpan fromMinutes(std::int32_t n);

    constexpr std::int32_t seconds() const { return seconds_; }

    // The checker takes the 0 that each comparison is rewritten with for a null pointer.
    friend constexpr auto operator<=>(TimeSpan, TimeSpan) = default; // NOLINT(modernize-use-nullptr)
    friend constexpr TimeSpan operator+(TimeSpan a, TimeSpan b);

private:
    constexpr explicit TimeSpan(std::int32_t seconds) : seconds_(seconds) {}

    std::int32_t seconds_ = 0;
};

/// The calendar fields of one instant in local time.
struct LocalTime {
    int year = 0;      ///< for instance 2005
    int month = 0;     ///< 1..12
    int day = 0;       ///< 1..31
    int hour = 0;      ///< 0..23
    int minute = 0;    ///< 0..59
    int second = 0;    ///< 0..59
    int dayOfWeek = 0; ///< 0 = Sunday .. 6 = Saturday

    friend bool operator==(const LocalTime&, const LocalTime&) = default;
};

/// Seconds since 1970-01-01 00:00:00 UTC. 0 means no time; a negative value is invalid and has no calendar
/// fields. never() is a convention of those who schedule and nothing special here.
class TimeValue {
public:
    constexpr TimeValue() = default;
    constexpr explicit TimeValue(std::int32_t seconds) : seconds_(seconds) {}

    /// The value that stands for "will not happen".
    static constexpr TimeValue never() { return TimeValue(0x7FFFFFFF); }

    /// The runtime's current time.
    static TimeValue now();

    /// The instant of a local date and time, as the runtime's `mktime` finds it: fields out of range roll
    /// over into the next larger one; isDst is 0, 1 or -1 (the runtime decides). 0 when it cannot be
    /// represented.
    static TimeValue fromLocal(int year, int month, int day, int hour, int minute, int second, int isDst);

    /// The instant of a date and time in UTC, the same in every zone; fields out of range roll over. 0 before
    /// 1970-01-01 00:00:00 and after 2038-01-19 03:14:07.
    static TimeValue fromUtc(int year, int month, int day, int hour, int minute, int second);

    constexpr std::int32_t seconds() const { return seconds_; }

    /// All calendar fields at the price of one; all 0 for a negative value.
    LocalTime local() const;

    // One calendar field each, 0 for a negative value. Whoever needs several asks local() once.
    int year() const { return local().year; }
    int month() const { return local().month; }
    int day() const { return local().day; }
    int hour() const { return local().hour; }
    int minute() const { return local().minute; }
    int second() const { return local().second; }
    int dayOfWeek() const { return local().dayOfWeek; }

    // NOLINTNEXTLINE(modernize-use-nullptr): the comparison that is made for it
    friend constexpr auto operator<=>(TimeValue, TimeValue) = default;
    friend constexpr TimeValue operator+(TimeValue t, TimeSpan span);
    friend constexpr TimeValue operator-(TimeValue t, TimeSpan span);

    /// The seconds from b to a; negative when a is earlier. Not a TimeSpan: spans do not go back.
    friend constexpr std::int32_t secondsBetween(TimeValue a, TimeValue b);

private:
    std::int32_t seconds_ = 0;
};

/// Where the current time comes from: the system's clock in the program, a clock that moves when told in
/// tests.
class Clock {
public:
    virtual ~Clock() = default;
    virtual TimeValue now() const = 0;

    /// For measuring how long something takes: counts from some fixed moment and is never set.
    virtual std::chrono::milliseconds uptime() const;
};

/// The clock that reads the runtime's current time.
const Clock& systemClock();

namespace detail {
/// The runtime's own record of `t` in local time, overwritten by the thread's next call; null for a negative
/// `t`.
const std::tm* localFields(TimeValue t);

// The arithmetic is done on unsigned numbers, where wrapping around is defined.
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
