// Command-line switches at the start of the text after the program's name. Case and text after a switch are
// ignored.
#pragma once

#include <string_view>

namespace scheduler {

/// "/close": tell a running copy to exit.
[[nodiscard]] bool asksToClose(std::string_view commandLine);

/// "/s", also after white space: the system started the program at log-on.
[[nodiscard]] bool asksForHiddenStart(std::string_view commandLine);

} // namespace scheduler
