// Where the history of the runs is kept.
#pragma once

#include "scheduler/run/runhistory.h"

#include <string>

namespace scheduler {

/// Writes to `history.txt` in a folder of the program below the user's folder for local data. Before the file
/// exceeds 1 MB it becomes `history.1.txt` and a new one begins.
class HistoryFile : public HistoryStore {
public:
    void append(const std::string& line) noexcept override;
};

} // namespace scheduler
