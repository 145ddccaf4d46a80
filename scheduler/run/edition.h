#pragma once

#include <string>
#include <string_view>

namespace scheduler {

/// The edition that owns the project's file type: 1, 2, 3 by the extension; 0 for none.
int editionOf(std::string_view path);

/// Empty if no edition owns the file's type.
std::string editionName(std::string_view path);

} // namespace scheduler
