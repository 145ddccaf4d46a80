#include "lib/base/placeholders.h"

#include "lib/base/dateparsing.h"
#include "lib/base/regexp.h"
#include "lib/base/strings.h"

namespace base {
namespace {

[[maybe_unused]] const bool registered = registerSourceFile(__FILE__, RELEASE_DATE);

} // namespace

std::string withoutPlaceholders(std::string_view command) {
    static const Expression placeholder("%[1-9]");
    std::string rest = placeholder.removeFrom(command);
    constexpr std::string_view emptyQuotes = "\"\"";
    for (std::size_t at = rest.find(emptyQuotes); at != std::string::npos; at = rest.find(emptyQuotes, at))
        rest.erase(at, emptyQuotes.size());
    trimRight(rest, whitespace);
    trimLeft(rest, whitespace);
    return rest;
}

} // namespace base
