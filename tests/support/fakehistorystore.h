#pragma once

#include "scheduler/run/runhistory.h"

#include <string>
#include <vector>

namespace test {

class FakeHistoryStore : public scheduler::HistoryStore {
public:
    std::vector<std::string> lines;

    void append(const std::string& line) noexcept override { lines.push_back(line); }
};

} // namespace test
