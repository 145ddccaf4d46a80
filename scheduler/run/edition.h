#pragma once

#include <string>
#include <string_view>

namespace scheduler {

/// The edition that the file's extension belongs to: 1, 2 or 3; 0 if none.
int editionOf(std::string_view path);

/// Empty if editionOf is 0.
std::string editionName(std::string_view path);

} // namespace scheduler
