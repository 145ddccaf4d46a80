#pragma once

#include "scheduler/run/runhistory.h"

#include <string>

namespace scheduler {

/// Appends to `history.txt` in the program's folder for local data. A file that would exceed 1 MB is first
/// renamed to `history.1.txt`.
class HistoryFile : public HistoryStore {
public:
    void append(const std::string& line) noexcept override;
};

} // namespace scheduler
