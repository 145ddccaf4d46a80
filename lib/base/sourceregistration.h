// The library's build time: every source of this library registers itself with the release's date.
//
// Defined beside the date parser, which reads the dates. This header includes nothing of the library, so that
// the sources beneath the parser can register too.
#pragma once

#include <string_view>

namespace base {

class TimeValue;

/// Each source of this library calls this once before the entry point, with its path and a date in the
/// compiler's form ("Jul 23 2005 19:54:31"). The date is the release's, not that of the compilation, so that
/// two builds of one state of the sources are the same file byte for byte. Always true, so that it can
/// initialise a constant.
[[nodiscard]] bool registerSourceFile(std::string_view path, std::string_view buildDate);

/// The latest date of a registered source, which is that of the release; 0 when there is none.
TimeValue buildTime();

} // namespace base
