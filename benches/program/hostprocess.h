// A Windows process as the Linux beneath sees it: Wine tells of other processes neither time nor memory.
#pragma once

#include <string>

namespace bench {

class HostProcess {
public:
    /// The one whose command line names this program; there must be one only.
    explicit HostProcess(const std::string& programName);

    /// Processor time of all its threads so far, in seconds.
    double processorTime() const;

    /// Memory that is its alone and in use, in megabytes.
    double privateMegabytes() const;

private:
    std::string folder_; ///< in /proc, with a backslash at its end
};

} // namespace bench
