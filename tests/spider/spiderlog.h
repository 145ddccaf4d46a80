// The sample spider's log, to which several spiders may append at once.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace spider {

/// The file that SCHEDULER_SPIDER_LOG names, else "spider.log" beside the program.
std::string logPath();

/// Appends one line: the local time, `event` ("start"), the run's number ("-" when it has none) and `detail`.
/// False when the line could not be written whole.
bool appendToLog(const std::string& path, const std::string& event, std::optional<std::uint32_t> runNumber,
                 const std::string& detail);

} // namespace spider
