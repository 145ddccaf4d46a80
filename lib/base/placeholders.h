// The texts by which the system starts a program on a file.
#pragma once

#include <string>
#include <string_view>

namespace base {

/// A registered command without its placeholders %1 to %9, the empty pairs of quotes that these leave, and
/// the white space around the rest.
std::string withoutPlaceholders(std::string_view command);

} // namespace base
