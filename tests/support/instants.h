// Times that are difficult for calendar code.
#pragma once

#include <cstdint>
#include <ctime>
#include <vector>

namespace test {

inline std::tm localFields(std::int32_t seconds) {
    const std::time_t t = seconds;
    return *std::localtime(&t);
}

/// The times 15 minutes before each local clock change from 2024 to 2026, by this runtime's rules.
inline std::vector<std::int32_t> clockChanges() {
    std::vector<std::int32_t> changes;
    constexpr std::int32_t quarter = 900;
    constexpr std::int32_t from = 1'704'067'200; // 2024-01-01 00:00:00 UTC
    constexpr std::int32_t to = 1'798'761'600;   // 2027-01-01 00:00:00 UTC
    const auto minuteOfDay = [](std::int32_t t) {
        const std::tm fields = localFields(t);
        return fields.tm_hour * 60 + fields.tm_min;
    };
    for (std::int32_t t = from; t < to; t += quarter)
        if ((minuteOfDay(t + quarter) - minuteOfDay(t) + 1440) % 1440 != 15)
            changes.push_back(t);
    return changes;
}

/// The last UTC second of some days, months and years.
inline std::vector<std::int32_t> calendarEnds() {
    return {
        951'782'399,   // 2000-02-28 23:59:59, in a leap year divisible by 100
        951'868'799,   // 2000-02-29 23:59:59
        1'104'537'599, // 2004-12-31 23:59:59
        1'109'635'199, // 2005-02-28 23:59:59
        1'122'681'599, // 2005-07-29 23:59:59
        1'122'854'399, // 2005-07-31 23:59:59
        1'136'073'599, // 2005-12-31 23:59:59
        1'709'164'799, // 2024-02-28 23:59:59
        1'709'251'199, // 2024-02-29 23:59:59
        1'767'225'599, // 2025-12-31 23:59:59
        2'145'916'799, // 2037-12-31 23:59:59
    };
}

} // namespace test
