// Command-line switches at the start of the text after the program's name. Case and other text are ignored.
#pragma once

#include <string_view>

namespace scheduler {

/// "/close": tell a running copy to exit.
[[nodiscard]] bool asksToClose(std::string_view commandLine);

/// "/s": the system started the program at log-on.
[[nodiscard]] bool asksForHiddenStart(std::string_view commandLine);

} // namespace scheduler
