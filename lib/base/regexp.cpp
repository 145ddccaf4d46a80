#include "lib/base/regexp.h"

#include "lib/base/sourceregistration.h"

#include <boost/regex.hpp>

namespace base {
namespace {

[[maybe_unused]] const bool registered = registerSourceFile(__FILE__, RELEASE_DATE);

using Iterator = boost::regex_iterator<std::string_view::const_iterator>;

boost::regex compile(std::string_view pattern, CaseRule defaultRule) {
    CaseRule rule = defaultRule;
    if (pattern.starts_with("[c]") || pattern.starts_with("[i]")) {
        rule = pattern[1] == 'i' ? CaseRule::Insensitive : CaseRule::Sensitive;
        pattern.remove_prefix(3);
    }
    // POSIX bracket lists have no escapes, but the program's expressions use them.
    constexpr boost::regex::flag_type noEscapes = boost::regex::no_escape_in_lists;
    boost::regex::flag_type syntax = boost::regex::extended & ~noEscapes;
    if (rule == CaseRule::Insensitive)
        syntax |= boost::regex::icase;
    return boost::regex(pattern.begin(), pattern.end(), syntax);
}

} // namespace

class Expression::Compiled {
public:
    Compiled(std::string_view pattern, CaseRule rule) : regex(compile(pattern, rule)) {}

    Iterator matchesIn(std::string_view text) const { return {text.begin(), text.end(), regex}; }

    const boost::regex regex;
};

Expression::Expression(std::string_view pattern, CaseRule defaultRule)
    : compiled_(std::make_unique<Compiled>(pattern, defaultRule)) {}

Expression::~Expression() = default;

bool Expression::matches(std::string_view text) const {
    return boost::regex_match(text.begin(), text.end(), compiled_->regex);
}

std::vector<std::string> Expression::matchesIn(std::string_view text) const {
    std::vector<std::string> found;
    for (Iterator match = compiled_->matchesIn(text); match != Iterator(); ++match)
        found.push_back(match->str());
    return found;
}

std::string Expression::removeFrom(std::string_view text) const {
    std::string rest;
    auto copied = text.begin();
    for (Iterator match = compiled_->matchesIn(text); match != Iterator(); ++match) {
        rest.append(copied, (*match)[0].first);
        copied = (*match)[0].second;
    }
    return rest.append(copied, text.end());
}

std::string piece(std::string_view text, std::size_t n, const Expression& separator) {
    auto start = text.begin();
    for (Iterator match = separator.compiled_->matchesIn(text); match != Iterator(); ++match) {
        if (n-- == 0)
            return {start, (*match)[0].first};
        start = (*match)[0].second;
    }
    return n == 0 ? std::string(start, text.end()) : std::string();
}

} // namespace base
