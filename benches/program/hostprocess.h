// Reads a process's time and memory from /proc, because Wine reports neither for other processes.
#pragma once

#include <string>

namespace bench {

class HostProcess {
public:
    /// Exactly one process of this program must run.
    explicit HostProcess(const std::string& programName);

    /// Seconds, over all threads.
    double processorTime() const;

    double privateMegabytes() const;

private:
    std::string folder_; ///< in /proc, with a trailing backslash
};

} // namespace bench
