// What the marking spider notes of its run: moments of the system's clock.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace bench {

/// In units of 100 ns, as the platform's FILETIME.
using Moment = std::int64_t;

Moment momentNow();
double secondsBetween(Moment from, Moment to);

struct Marks {
    Moment started = 0; ///< the process, as the platform tells
    Moment ended = 0;   ///< just before the process ends
};

/// A file beside the project file.
void writeMarks(const std::string& project, const Marks& marks);
std::optional<Marks> readMarks(const std::string& project);

/// Set by the bench to let the runs end that wait for each other; without it a run ends at once.
inline constexpr const char* endTogetherEvent = "bench: runs may end";
/// Released once by each run that has begun.
inline constexpr const char* begunSemaphore = "bench: runs begun";

} // namespace bench
