#pragma once

#include <string>
#include <string_view>

namespace base {

/// A registered command without the placeholders %1 to %9, the empty quotes that remain of them, and
/// surrounding white space.
std::string withoutPlaceholders(std::string_view command);

} // namespace base
