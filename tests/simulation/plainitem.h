// An entry and its next run, told as plainly as they can be, for the rules to compare the engine with.
//
// Nothing of the program's own is used: fields and calendar are this file's.
#pragma once

#include <array>
#include <cstdint>
#include <ctime>
#include <string>

namespace plain {

using Second = std::int64_t;

constexpr Second never = 2147483647;

inline std::tm fieldsOf(Second second) {
    const auto time = static_cast<std::time_t>(second);
    return *std::localtime(&time);
}

inline Second secondOf(int year, int month, int day, int hour) {
    std::tm fields{};
    fields.tm_year = year;
    fields.tm_mon = month;
    fields.tm_mday = day;
    fields.tm_hour = hour;
    fields.tm_isdst = -1;
    return static_cast<Second>(std::mktime(&fields));
}

struct Item {
    std::string path;
    bool isProject = true;
    int kind = 0;
    Second time = 0;
    int minutes = 0;
    int after = 0;
    std::array<bool, 7> days = {true, true, true, true, true, true, true}; // Monday first
    int dayOfMonth = 1;
    bool off = false;
    unsigned retries = 0;
    int retryMinutes = 15;

    bool runs = false;
    Second waitsSince = 0;
    Second began = 0;
    int number = 0;
    Second next = 0;
    unsigned retried = 0;
    Second lastRun = 0;
    std::string result;

    friend bool operator==(const Item&, const Item&) = default;
};

inline Second nextRunOf(const Item& item, Second now, bool atLogOn) {
    const std::tm today = fieldsOf(now);
    const std::tm timeFields = item.time < 0 ? std::tm{} : fieldsOf(item.time);
    const int clockTime = (timeFields.tm_hour * 60 + timeFields.tm_min) * 60 + timeFields.tm_sec;
    switch (item.kind) {
    case 1:
        return atLogOn ? 0 : never;
    case 2: {
        const Second thisHour = secondOf(today.tm_year, today.tm_mon, today.tm_mday, today.tm_hour);
        const int hoursOn = today.tm_min < item.minutes ? 0 : 1;
        return thisHour + (hoursOn * 60 + item.minutes) * 60;
    }
    case 3: {
        Second day = secondOf(today.tm_year, today.tm_mon, today.tm_mday, 0) + clockTime;
        if (day < now)
            day += 24 * 3600;
        for (int tries = 0; tries < 7 && !item.days[static_cast<unsigned>(fieldsOf(day).tm_wday + 6) % 7];
             ++tries)
            day += 24 * 3600;
        return day;
    }
    case 4: {
        const Second intoMonth =
            Second{item.dayOfMonth < 1 ? 0 : item.dayOfMonth - 1} * 24 * 3600 + clockTime;
        const Second inThis = secondOf(today.tm_year, today.tm_mon, 1, 0) + intoMonth;
        if (inThis >= now)
            return inThis;
        return today.tm_mon == 11 ? secondOf(today.tm_year + 1, 0, 1, 0) + intoMonth
                                  : secondOf(today.tm_year, today.tm_mon + 1, 1, 0) + intoMonth;
    }
    case 5:
        return item.time > now ? item.time : never;
    default:
        return never;
    }
}

} // namespace plain
