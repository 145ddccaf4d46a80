// A simple reference entry with its next-run rule. Uses the C runtime's calendar and no code of the program.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <ctime>
#include <ostream>
#include <string>

namespace plain {

using Second = std::int64_t;

constexpr Second never = 2147483647;
constexpr Second secondsOfDay = 24 * 3600;

/// Wraps to the 32 bits that the schedule stores.
constexpr Second wrapped(Second second) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(second));
}

/// Local time. Before 1970: year 0, month 0 (before January) and 0 in all other fields.
inline std::tm fieldsOf(Second second) {
    std::tm none{};
    none.tm_year = -1900;
    none.tm_mon = -1;
    const auto time = static_cast<std::time_t>(second);
    return second < 0 ? none : *std::localtime(&time);
}

/// Year and month as in std::tm. 0 if mktime fails or the result exceeds 32 bits.
inline Second secondOf(int year, int month, int day, int hour) {
    std::tm fields{};
    fields.tm_year = year;
    fields.tm_mon = month;
    fields.tm_mday = day;
    fields.tm_hour = hour;
    fields.tm_isdst = -1;
    const Second second = std::mktime(&fields);
    return second == -1 || second != wrapped(second) ? 0 : second;
}

inline int clockTimeOf(Second second) {
    const std::tm fields = fieldsOf(second);
    return (fields.tm_hour * 60 + fields.tm_min) * 60 + fields.tm_sec;
}

struct Item {
    std::string path;
    std::string result;
    Second lastRun = 0;
    int kind = 0;
    Second time = 0;
    int minutes = 0;
    int after = 0;
    std::array<unsigned char, 7> days = {1, 1, 1, 1, 1, 1, 1}; // Monday first
    int dayOfMonth = 1;
    int command = 0;
    std::string dialup;
    int timeLimit = 0;
    unsigned char hangsUp = 0;
    unsigned char off = 0;
    unsigned char runs = 0;
    Second waitsSince = 0;
    Second began = 0;
    int number = 0;
    Second next = 0;
    unsigned retries = 0;
    unsigned retried = 0;
    int retryMinutes = 15;

    bool isProject() const { return !path.starts_with("run:"); }

    friend bool operator==(const Item&, const Item&) = default;

    friend std::ostream& operator<<(std::ostream& out, const Item& item) {
        out << '"' << item.path << "\" kind " << item.kind << ", time " << item.time << ", minutes "
            << item.minutes << ", after " << item.after << ", days ";
        for (const unsigned char flag : item.days)
            out << int{flag};
        return out << ", day " << item.dayOfMonth << ", command " << item.command << ", dial-up \""
                   << item.dialup << "\", limit " << item.timeLimit << ", hangs up " << int{item.hangsUp}
                   << ", off " << int{item.off} << ", runs " << int{item.runs} << ", waits since "
                   << item.waitsSince << ", began " << item.began << ", number " << item.number << ", next "
                   << item.next << ", retries " << item.retries << ", retried " << item.retried << ", every "
                   << item.retryMinutes << ", last " << item.lastRun << ", result \"" << item.result << '"';
    }
};

/// Daily and monthly entries take today's date from `clock`. Everything else uses `now`.
inline Second nextRunOf(const Item& item, Second now, Second clock, bool atLogOn) {
    const std::tm today = fieldsOf(clock);
    switch (item.kind) {
    case 1:
        return atLogOn ? 0 : never;
    case 2: {
        const std::tm moment = fieldsOf(now);
        const Second thisHour = secondOf(moment.tm_year, moment.tm_mon, moment.tm_mday, moment.tm_hour);
        const int hoursOn = moment.tm_min < item.minutes ? 0 : 1;
        return wrapped(thisHour + (Second{item.minutes} + hoursOn * 60) * 60);
    }
    case 3: {
        Second day =
            wrapped(secondOf(today.tm_year, today.tm_mon, today.tm_mday, 0) + clockTimeOf(item.time));
        if (day < now)
            day = wrapped(day + secondsOfDay);
        for (int tries = 0; tries < 7 && !item.days[static_cast<unsigned>(fieldsOf(day).tm_wday + 6) % 7];
             ++tries)
            day = wrapped(day + secondsOfDay);
        return day;
    }
    case 4: {
        const Second days = std::clamp<Second>(Second{item.dayOfMonth} - 1, 0, 25000);
        const Second intoMonth = days * secondsOfDay + clockTimeOf(item.time);
        const Second inThis = wrapped(secondOf(today.tm_year, today.tm_mon, 1, 0) + intoMonth);
        if (inThis >= now)
            return inThis;
        const bool december = today.tm_mon == 11;
        return wrapped(secondOf(today.tm_year + december, december ? 0 : today.tm_mon + 1, 1, 0) + intoMonth);
    }
    case 5:
        return item.time > now ? item.time : never;
    default:
        return never;
    }
}

} // namespace plain
