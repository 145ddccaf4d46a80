// Expected times, computed with the C runtime for local fields and with <chrono> for UTC.
#pragma once

#include "tests/support/instants.h"

#include <chrono>
#include <cstdint>
#include <ctime>
#include <vector>

namespace test {

/// Fields out of range roll over. 0 if mktime fails or the result exceeds 32 bits.
inline std::int32_t localSeconds(int year, int month, int day, int hour = 0, int minute = 0, int second = 0,
                                 int isDst = -1) {
    std::tm fields{};
    fields.tm_year = year - 1900;
    fields.tm_mon = month - 1;
    fields.tm_mday = day;
    fields.tm_hour = hour;
    fields.tm_min = minute;
    fields.tm_sec = second;
    fields.tm_isdst = isDst;
    const std::time_t t = std::mktime(&fields);
    return t == -1 || t != static_cast<std::int32_t>(t) ? 0 : static_cast<std::int32_t>(t);
}

inline std::int32_t utcSeconds(int year, unsigned month, unsigned day) {
    using namespace std::chrono;
    const sys_days date = std::chrono::year(year) / std::chrono::month(month) / std::chrono::day(day);
    return static_cast<std::int32_t>(duration_cast<seconds>(date.time_since_epoch()).count());
}

/// Both ends of the range, some fixed times, and times around calendar ends and clock changes.
inline std::vector<std::int32_t> instants() {
    std::vector<std::int32_t> result = {1, 2 * 86400, 68'169'599, 784'111'777, INT32_MAX - 1, INT32_MAX};
    for (const std::int32_t end : calendarEnds())
        for (std::int32_t t = end - 14 * 3600; t <= end + 14 * 3600; t += 1800)
            result.insert(result.end(), {t, t + 1});
    for (const std::int32_t change : clockChanges())
        for (std::int32_t t = change - 4 * 3600; t <= change + 4 * 3600; t += 307)
            result.push_back(t);
    return result;
}

} // namespace test
