// Strings in the system's ANSI code page. The runtime's `tolower` defines case, except for toLower().
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace base {

inline constexpr std::string_view whitespace = " \r\n\t\f";

inline constexpr std::string_view invalidFileNameChars = "\\/:*?\"<>|";

inline constexpr std::uint32_t notFound = 0xFFFFFFFF;

/// A to Z, in either case.
[[nodiscard]] bool isLetter(char character);

std::string trim(std::string_view text, std::string_view set);

void trimRight(std::string& text, std::string_view set);

void trimLeft(std::string& text, std::string_view set);

void toLower(std::string& text);

int compareNoCase(std::string_view a, std::string_view b);

[[nodiscard]] bool startsWithNoCase(std::string_view text, std::string_view prefix);
[[nodiscard]] bool endsWithNoCase(std::string_view text, std::string_view suffix);

/// The first position p (from <= p < limit) of `what`, ignoring case. notFound if none or `what` is empty.
std::uint32_t findNoCase(std::string_view text, std::string_view what, std::uint32_t from = 0,
                         std::uint32_t limit = notFound);

/// The number at the start of `text`, after any spaces and control characters 9 to 13: an optional sign, then
/// digits (letters, too, if the base is above 10). 0 if there are no digits; wraps around if too large.
std::int64_t toInteger(std::string_view text, int base);

/// Overwrites the first `count` characters. Lengthens a shorter text.
void fill(std::string& text, std::size_t count, char character);

/// Piece `n`, counted from 0, of `text` split at each `separator`; empty if there is no such piece.
std::string pieceAt(std::string_view text, std::size_t n, char separator);

} // namespace base
