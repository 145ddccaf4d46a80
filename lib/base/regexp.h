#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace base {

enum class CaseRule { Sensitive, Insensitive };

/// A compiled extended POSIX expression, leftmost-longest. Immutable, so every thread may use it. Matching
/// can throw std::runtime_error if repetitions are nested; the program's own expressions have none.
class [[nodiscard]] Expression {
public:
    /// A leading "[c]" (sensitive) or "[i]" overrides the rule. Throws std::runtime_error if malformed.
    explicit Expression(std::string_view pattern, CaseRule defaultRule = CaseRule::Sensitive);
    ~Expression();
    Expression(const Expression&) = delete;
    Expression& operator=(const Expression&) = delete;

    /// Whether the whole text matches.
    bool matches(std::string_view text) const;

    std::vector<std::string> matchesIn(std::string_view text) const;

    std::string removeFrom(std::string_view text) const;

    /// Piece `n`, counted from 0, of `text` split at each `separator` match; empty if there is no such piece.
    friend std::string piece(std::string_view text, std::size_t n, const Expression& separator);

private:
    class Compiled;
    std::unique_ptr<const Compiled> compiled_;
};

std::string piece(std::string_view text, std::size_t n, const Expression& separator);

} // namespace base
