// The library's build time. Includes no other header of the library, so that every source can register.
#pragma once

#include <string_view>

namespace base {

class TimeValue;

/// Each source calls this once, before the entry point, to initialise a constant with the result, which is
/// always true. `buildDate` is the release date, in the compiler's format ("Jul 23 2005 19:54:31").
[[nodiscard]] bool registerSourceFile(std::string_view path, std::string_view buildDate);

/// The latest registered date; 0 if there is none.
TimeValue buildTime();

} // namespace base
