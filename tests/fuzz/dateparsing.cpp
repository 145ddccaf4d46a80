#include "lib/base/dateparsing.h"

#include "tests/fuzz/fuzzing.h"
#include "tests/support/plaindates.h"

using base::TimeValue;
using fuzzing::require;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    TimeValue first;
    const auto check = [&](TimeValue (*parse)(std::string_view), std::int32_t expected, const char* what) {
        const TimeValue time = parse(text);
        require(time.seconds() == expected, what);
        if (first == TimeValue())
            first = time;
    };
    check(base::parseInternetDate, plain::internetDate(text), "parseInternetDate() is right");
    check(base::parseAsctimeDate, plain::asctimeDate(text), "parseAsctimeDate() is right");
    check(base::parseFreeDate, plain::freeDate(text), "parseFreeDate() is right");
    require(base::parseDateTime(text) == first, "parseDateTime() returns the first match");
    return 0;
}
