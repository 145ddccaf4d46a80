#include "lib/base/placeholders.h"

#include "lib/base/regexp.h"
#include "lib/base/sourceregistration.h"
#include "lib/base/strings.h"

#include <algorithm>

namespace base {
namespace {

[[maybe_unused]] const bool registered = registerSourceFile(__FILE__, RELEASE_DATE);

} // namespace

std::string withoutPlaceholders(std::string_view command) {
    static const Expression placeholder("%[1-9]");
    const std::string given = placeholder.removeFrom(command);
    constexpr std::string_view emptyQuotes = "\"\"";
    std::string rest;
    // One pass: erasing each pair in place would take quadratic time.
    for (std::size_t at = 0; at < given.size();) {
        const std::size_t pair = std::min(given.find(emptyQuotes, at), given.size());
        rest.append(given, at, pair - at);
        at = pair + emptyQuotes.size();
    }
    trimRight(rest, whitespace);
    trimLeft(rest, whitespace);
    return rest;
}

} // namespace base
