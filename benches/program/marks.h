// Times that the marking spider records for its run.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace bench {

/// In units of 100 ns since 1601, like FILETIME.
using Moment = std::int64_t;

Moment momentNow();
double secondsBetween(Moment from, Moment to);

struct Marks {
    Moment started = 0;
    Moment ended = 0; ///< just before process exit
};

/// Stored in a file next to the project file.
void writeMarks(const std::string& project, const Marks& marks);
std::optional<Marks> readMarks(const std::string& project);

/// If both objects exist, each run releases the semaphore once when it starts, then waits for the event.
inline constexpr const char* endTogetherEvent = "bench: runs may end";
inline constexpr const char* begunSemaphore = "bench: runs begun";

} // namespace bench
