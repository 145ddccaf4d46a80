// Any text as a date: white space around it, the case of its letters and what the other layouts make of it do
// not matter.
#include "lib/base/dateparsing.h"

#include "tests/fuzz/fuzzing.h"
#include "tests/support/plaindates.h"

#include <string>

using base::TimeValue;
using fuzzing::require;

namespace {

std::string uppercased(std::string_view text) {
    std::string result(text);
    for (char& character : result)
        if (character >= 'a' && character <= 'z')
            character = static_cast<char>(character - 'a' + 'A');
    return result;
}

void check(TimeValue (*parse)(std::string_view), std::string_view text) {
    const TimeValue time = parse(text);
    require(parse(" \t\f\r\n" + std::string(text) + "\n\r\f\t ") == time,
            "white space around does not matter");
    require(parse(uppercased(text)) == time, "case does not matter");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    check(base::parseInternetDate, text);
    check(base::parseAsctimeDate, text);
    check(base::parseFreeDate, text);
    require(base::parseInternetDate(text).seconds() == plain::internetDate(text), "the internet layout");
    require(base::parseAsctimeDate(text).seconds() == plain::asctimeDate(text), "asctime's layout");
    require(base::parseFreeDate(text).seconds() == plain::freeDate(text), "the tolerant layout");

    TimeValue first = base::parseInternetDate(text);
    if (first == TimeValue())
        first = base::parseAsctimeDate(text);
    if (first == TimeValue())
        first = base::parseFreeDate(text);
    require(base::parseDateTime(text) == first, "the first layout that fits gives the date");

    // What was read and is written as a user would is the same minute.
    const TimeValue free = base::parseFreeDate(text);
    if (free <= TimeValue())
        return 0;
    const base::LocalTime local = free.local();
    const std::string written = std::to_string(local.month) + '/' + std::to_string(local.day) + '/' +
                                std::to_string(local.year) + ' ' + std::to_string(local.hour) + ':' +
                                std::to_string(local.minute) + ':' + std::to_string(local.second);
    require(base::parseFreeDate(written).local() == local, "a date that is written out is read again");
    return 0;
}
