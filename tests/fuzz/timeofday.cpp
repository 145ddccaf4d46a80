// Fuzzes the time of day against a second implementation of the rule.
#include "lib/base/dateparsing.h"
#include "tests/fuzz/fuzzing.h"

#include <vector>

namespace {

bool isDigit(char character) {
    return character >= '0' && character <= '9';
}

bool isLetter(char character) {
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
}

constexpr std::int64_t largest = 0x7FFFFFFF;

std::int64_t plainly(std::string_view text) {
    std::vector<std::int64_t> numbers;
    std::size_t at = 0;
    std::size_t behind = 0;
    while (numbers.size() < 3) {
        while (at < text.size() && !isDigit(text[at]))
            ++at;
        if (at == text.size())
            break;
        std::int64_t number = 0;
        for (; at < text.size() && isDigit(text[at]); ++at)
            number = number > largest ? number : number * 10 + (text[at] - '0');
        numbers.push_back(number > largest ? largest : number);
        behind = at;
    }
    numbers.resize(3);
    std::int64_t hour = numbers[0], minute = numbers[1], second = numbers[2];
    if (hour > 24) {
        second = minute;
        minute = hour % 100;
        hour = hour / 100;
    }
    while (behind < text.size() && !isLetter(text[behind]))
        ++behind;
    const char letter = behind < text.size() ? text[behind] : ' ';
    if (hour < 12 && (letter == 'p' || letter == 'P'))
        hour += 12;
    else if (hour == 12 && (letter == 'a' || letter == 'A'))
        hour = 0;
    return (hour * 60 + minute) * 60 + second;
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const std::int32_t seconds = base::parseTimeOfDay(text).seconds();
    const std::int64_t expected = plainly(text);
    // The sum wraps around.
    if (expected <= largest)
        fuzzing::require(seconds == expected, "the seconds after midnight are those of the rule");
    return 0;
}
