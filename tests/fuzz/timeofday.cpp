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

std::int64_t plainTimeOfDay(std::string_view text) {
    std::vector<std::int64_t> numbers;
    std::size_t at = 0;
    std::size_t suffix = 0;
    while (numbers.size() < 3) {
        while (at < text.size() && !isDigit(text[at]))
            ++at;
        if (at == text.size())
            break;
        std::int64_t number = 0;
        for (; at < text.size() && isDigit(text[at]); ++at)
            number = number > largest ? number : number * 10 + (text[at] - '0');
        numbers.push_back(number > largest ? largest : number);
        suffix = at;
    }
    numbers.resize(3);
    std::int64_t hour = numbers[0], minute = numbers[1], second = numbers[2];
    if (hour > 24) {
        second = minute;
        minute = hour % 100;
        hour = hour / 100;
    }
    while (suffix < text.size() && !isLetter(text[suffix]))
        ++suffix;
    const char letter = suffix < text.size() ? text[suffix] : ' ';
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
    const std::int64_t expected = plainTimeOfDay(text);
    // parseTimeOfDay() wraps larger sums, so they are not compared.
    if (expected <= largest)
        fuzzing::require(seconds == expected, "parseTimeOfDay() agrees with plainTimeOfDay()");
    return 0;
}
