#pragma once

#include <string>
#include <vector>

namespace test {

using EventLog = std::vector<std::string>;

} // namespace test
