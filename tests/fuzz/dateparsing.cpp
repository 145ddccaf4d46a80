// Fuzzes date parsing.
#include "lib/base/dateparsing.h"

#include "tests/fuzz/fuzzing.h"
#include "tests/support/plaindates.h"

using base::TimeValue;
using fuzzing::require;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    TimeValue first;
    const auto check = [&](TimeValue (*parse)(std::string_view), std::int32_t expected, const char* layout) {
        const TimeValue time = parse(text);
        require(time.seconds() == expected, layout);
        if (first == TimeValue())
            first = time;
    };
    check(base::parseInternetDate, plain::internetDate(text), "the internet layout");
    check(base::parseAsctimeDate, plain::asctimeDate(text), "asctime's layout");
    check(base::parseFreeDate, plain::freeDate(text), "the tolerant layout");
    require(base::parseDateTime(text) == first, "the first layout that fits gives the date");
    return 0;
}
