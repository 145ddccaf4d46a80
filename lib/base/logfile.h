#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace base {

struct LogFile {
    std::string path;        ///< full path; its folder is created if missing
    std::string olderPath;   ///< a full log is moved here, replacing an earlier one
    std::string header;      ///< first line of each file
    std::uint32_t sizeLimit; ///< in bytes; a line that would exceed it starts a new file
};

/// Appends `line` and a line break in one write. A crash can truncate only this line; the next one still
/// starts on its own line. A full log that cannot be moved keeps growing. False if not written completely.
[[nodiscard]] bool appendLine(const LogFile& log, std::string_view line);

} // namespace base
