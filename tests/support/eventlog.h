// What the doubles of one test saw, in order.
#pragma once

#include <string>
#include <vector>

namespace test {

using EventLog = std::vector<std::string>;

} // namespace test
