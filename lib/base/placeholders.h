#pragma once

#include <string>
#include <string_view>

namespace base {

/// Removes the placeholders %1 to %9, the empty quotes that remain, and surrounding white space.
std::string withoutPlaceholders(std::string_view command);

} // namespace base
