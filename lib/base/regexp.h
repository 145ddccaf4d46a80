// Regular expressions in the extended POSIX syntax, leftmost-longest.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace base {

enum class CaseRule { Sensitive, Insensitive };

/// One compiled expression. Immutable, so every thread may use it.
///
/// Matching throws std::runtime_error when its work explodes, as it can where repetitions are nested; the
/// program's own expressions have none.
class [[nodiscard]] Expression {
public:
    /// Compiles `pattern`. A pattern that begins with "[c]" is compiled without these three characters and
    /// regards case, one that begins with "[i]" ignores it; any other follows `defaultRule`.
    /// A malformed pattern is a mistake in the program and throws std::runtime_error.
    explicit Expression(std::string_view pattern, CaseRule defaultRule = CaseRule::Sensitive);
    ~Expression();
    Expression(const Expression&) = delete;
    Expression& operator=(const Expression&) = delete;

    /// Whether the whole text matches.
    bool matches(std::string_view text) const;

    /// Every match in `text`, in order.
    std::vector<std::string> matchesIn(std::string_view text) const;

    /// `text` without its matches.
    std::string removeFrom(std::string_view text) const;

    /// Piece number `n`, counting from 0, of `text` cut at every match of `separator`; empty when there is
    /// none.
    friend std::string piece(std::string_view text, std::size_t n, const Expression& separator);

private:
    class Compiled;
    std::unique_ptr<const Compiled> compiled_;
};

std::string piece(std::string_view text, std::size_t n, const Expression& separator);

} // namespace base
