// The editions of the spider, each of which owns one type of project files.
#pragma once

#include <string>
#include <string_view>

namespace scheduler {

/// Which edition of the spider owns the project file's type: 1, 2, 3 by the extension, 0 for none.
int editionOf(std::string_view path);

/// The edition's name; empty for none.
std::string editionName(std::string_view path);

} // namespace scheduler
