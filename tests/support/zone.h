// The time zone of a test run.
#pragma once

#include <gtest/gtest.h>

#include <memory>

namespace test {

/// Fails the run unless the runtime uses the zone that SCHEDULER_ZONE names. A runtime that does not know a
/// zone silently uses UTC.
std::unique_ptr<testing::Environment> zoneOfTheRun();

} // namespace test
