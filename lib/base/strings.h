// Text operations on 8-bit strings in the system's ANSI code page.
//
// Nothing here fails: a search without a result gives `notFound`, a text without digits gives 0. Unless a
// function says "in place" its arguments are left alone. Case is ignored through the runtime's `tolower`.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace base {

/// The set that every trim in the program uses: blank, carriage return, line feed, tab, form feed.
inline constexpr std::string_view whitespace = " \r\n\t\f";

/// Characters that may not stand in a file name.
inline constexpr std::string_view invalidFileNameChars = "\\/:*?\"<>|";

/// The result of a search that found nothing.
inline constexpr std::uint32_t notFound = 0xFFFFFFFF;

/// Whether the character is one of the 26 English letters, in either case.
[[nodiscard]] bool isLetter(char character);

/// `text` without leading and trailing characters of `set`.
std::string trim(std::string_view text, std::string_view set);

/// Removes trailing characters of `set` in place.
void trimRight(std::string& text, std::string_view set);

/// Removes leading characters of `set` in place.
void trimLeft(std::string& text, std::string_view set);

/// Lowers every character in place, by the rules of the system's code page.
void toLower(std::string& text);

/// Negative, 0 or positive; a text that is the other's prefix sorts first.
int compareNoCase(std::string_view a, std::string_view b);

[[nodiscard]] bool startsWithNoCase(std::string_view text, std::string_view prefix);
[[nodiscard]] bool endsWithNoCase(std::string_view text, std::string_view suffix);

/// The first position p with from <= p < limit at which `what` occurs whole in `text`, ignoring case.
/// `notFound` when there is none, when `what` is empty or when `from` lies beyond the text.
std::uint32_t findNoCase(std::string_view text, std::string_view what, std::uint32_t from = 0,
                         std::uint32_t limit = notFound);

/// The number at the start of `text`: blanks and the control characters 9 to 13 are skipped, one sign is
/// taken, then digits (letters count from 10 in a base above 10) up to the first other character. Wraps
/// around when the number is too large.
std::int64_t toInteger(std::string_view text, int base);

/// Overwrites the first `count` characters in place and appends copies until the text has `count` characters.
/// A longer text keeps its length and its tail.
void fill(std::string& text, std::size_t count, char character);

/// Piece number `n`, counting from 0, of `text` cut at each `separator`; two separators in a row have an
/// empty piece between them. Empty when there is no such piece.
std::string pieceAt(std::string_view text, std::size_t n, char separator);

} // namespace base
