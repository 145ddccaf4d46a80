// A text file that grows line by line.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace base {

/// Where a log is and how large it may become.
struct LogFile {
    std::string path;        ///< full; its folder is created when it is missing
    std::string olderPath;   ///< a full file is moved here and replaces the one before
    std::string header;      ///< first line of each file
    std::uint32_t sizeLimit; ///< in bytes; a line that would exceed it goes into a new file
};

/// Appends `line`, which has no line break, in one write, so that a crash cuts off this line at most. The
/// line after a cut one begins on a line of its own. A full file that cannot be moved grows. False when the
/// line was not written whole.
[[nodiscard]] bool appendLine(const LogFile& log, std::string_view line);

} // namespace base
