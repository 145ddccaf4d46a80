#include "lib/base/strings.h"

#include "lib/base/locale.h"
#include "lib/base/sourceregistration.h"

#include <algorithm>
#include <cctype>

namespace base {
namespace {

[[maybe_unused]] const bool registered = registerSourceFile(__FILE__, RELEASE_DATE);

int lowered(char character) {
    return std::tolower(static_cast<unsigned char>(character));
}

bool equalNoCase(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return lowered(x) == lowered(y); });
}

/// Negative if the character is not a digit of this base.
int digitValue(char character, int base) {
    if (character >= '0' && character < '0' + std::min(base, 10))
        return character - '0';
    const char letter = static_cast<char>(character | 0x20);
    if (letter >= 'a' && letter < 'a' + std::min(base - 10, 26))
        return letter - 'a' + 10;
    return -1;
}

bool isLeadingBlank(char character) {
    return character == ' ' || (character >= 9 && character <= 13);
}

} // namespace

bool isLetter(char character) {
    const int lower = character | 0x20;
    return lower >= 'a' && lower <= 'z';
}

std::string trim(std::string_view text, std::string_view set) {
    const std::size_t first = text.find_first_not_of(set);
    if (first == std::string_view::npos)
        return {};
    return std::string(text.substr(first, text.find_last_not_of(set) - first + 1));
}

void trimRight(std::string& text, std::string_view set) {
    text.erase(text.find_last_not_of(set) + 1);
}

void trimLeft(std::string& text, std::string_view set) {
    text.erase(0, text.find_first_not_of(set));
}

void toLower(std::string& text) {
    std::ranges::transform(text, text.begin(), lowerCase);
}

int compareNoCase(std::string_view a, std::string_view b) {
    const std::size_t common = std::min(a.size(), b.size());
    for (std::size_t i = 0; i < common; ++i)
        if (const int difference = lowered(a[i]) - lowered(b[i]))
            return difference;
    return a.size() < b.size() ? -1 : a.size() > b.size();
}

bool startsWithNoCase(std::string_view text, std::string_view prefix) {
    return text.size() >= prefix.size() && equalNoCase(text.substr(0, prefix.size()), prefix);
}

bool endsWithNoCase(std::string_view text, std::string_view suffix) {
    return text.size() >= suffix.size() && equalNoCase(text.substr(text.size() - suffix.size()), suffix);
}

std::uint32_t findNoCase(std::string_view text, std::string_view what, std::uint32_t from,
                         std::uint32_t limit) {
    if (what.empty() || what.size() > text.size())
        return notFound;
    const auto end = static_cast<std::uint32_t>(std::min<std::size_t>(text.size() - what.size() + 1, limit));
    for (std::uint32_t position = from; position < end; ++position)
        if (equalNoCase(text.substr(position, what.size()), what))
            return position;
    return notFound;
}

std::int64_t toInteger(std::string_view text, int base) {
    const auto* character = std::ranges::find_if_not(text, isLeadingBlank);
    bool negative = false;
    if (character != text.end() && (*character == '-' || *character == '+'))
        negative = *character++ == '-';
    // Unsigned, because signed overflow is undefined.
    std::uint64_t value = 0;
    for (; character != text.end(); ++character) {
        const int digit = digitValue(*character, base);
        if (digit < 0)
            break;
        value = value * static_cast<std::uint64_t>(base) + static_cast<std::uint64_t>(digit);
    }
    return static_cast<std::int64_t>(negative ? 0 - value : value);
}

void fill(std::string& text, std::size_t count, char character) {
    text.replace(0, std::min(count, text.size()), count, character);
}

std::string pieceAt(std::string_view text, std::size_t n, char separator) {
    std::size_t start = 0;
    for (; n > 0; --n) {
        const std::size_t cut = text.find(separator, start);
        if (cut == std::string_view::npos)
            return {};
        start = cut + 1;
    }
    return std::string(text.substr(start, text.find(separator, start) - start));
}

} // namespace base
