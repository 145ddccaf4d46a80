// The sample spider's project file: how long a run takes and how it ends.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace spider {

struct Project {
    std::chrono::milliseconds duration{0};
    std::string result;
    std::uint32_t error = 0;
    bool resultAsNumber = false; ///< a number is left where the text belongs
    bool leaveNothing = false;
    bool crash = false;
};

/// Reads a project file's text, whose form README.md tells.
Project parseProject(std::string_view text);

/// How long a run takes that may last for so many minutes; 0 or none: no limit.
std::chrono::milliseconds runTime(const Project& project, std::optional<std::int64_t> timeLimitMinutes);

} // namespace spider
