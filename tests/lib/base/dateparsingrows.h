// What the tests of the layouts of dates have in common.
#pragma once

#include "lib/base/dateparsing.h"
#include "lib/base/formatting.h"

#include <gtest/gtest.h>

#include <cctype>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace base {

inline void PrintTo(TimeValue t, std::ostream* out) {
    *out << t.seconds() << " (" << formatPattern(t, "%Y-%m-%d %H:%M:%S") << ')';
}

} // namespace base

namespace test {

using base::TimeValue;

using Parser = TimeValue (*)(std::string_view);

/// Local fields as they are given to the runtime, which rolls over those that are out of range.
struct Fields {
    int year, month, day, hour = 0, minute = 0, second = 0;

    TimeValue value(int isDst = -1) const {
        return TimeValue::fromLocal(year, month, day, hour, minute, second, isDst);
    }
};

struct Row {
    std::string text;
    TimeValue expected;
};

inline void expectAll(Parser parse, const std::vector<Row>& rows) {
    for (const Row& row : rows)
        EXPECT_EQ(parse(row.text), row.expected) << '"' << row.text << '"';
}

inline const TimeValue none;

inline const char* const shortNames[] = {"jan", "feb", "mar", "apr", "may", "jun",
                                         "jul", "aug", "sep", "oct", "nov", "dec"};
inline const char* const longNames[] = {"January",   "February", "March",    "April",
                                        "May",       "June",     "July",     "August",
                                        "September", "October",  "November", "December"};

inline std::string upper(std::string text) {
    for (char& character : text)
        character = static_cast<char>(std::toupper(static_cast<unsigned char>(character)));
    return text;
}

} // namespace test
