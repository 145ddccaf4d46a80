// What the program's command line asks for. Switches are prefixes of the text behind the program's name, in
// any case; whatever else stands there is ignored.
#pragma once

#include <string_view>

namespace scheduler {

/// "/close": tell a running copy to exit.
[[nodiscard]] bool asksToClose(std::string_view commandLine);

/// "/s": started by the system at log-on.
[[nodiscard]] bool asksForHiddenStart(std::string_view commandLine);

} // namespace scheduler
