// What the sample spider was told on its command line.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace spider {

struct Invocation {
    bool registerTypes = false;
    std::optional<std::uint32_t> runNumber; ///< none: opened by hand
    char runCommand = 0;                    ///< 'r', 'u', 'l' or 'c'; 0 = none was given
    std::string dialupEntry;
    bool disconnectWhenDone = false;
    bool endWhenDone = false; ///< /e
    std::optional<std::int64_t> timeLimitMinutes;
    std::string projectPath; ///< the last word that is no switch; empty when there is none
};

/// Reads a command line whose first word is the program itself. Words that mean nothing are passed over.
Invocation parseInvocation(std::string_view commandLine);

} // namespace spider
