#include "lib/base/base.h"

#include <gmock/gmock.h>

namespace base {
namespace {

TEST(VendorName, IsTheMakersKeyWord) {
    EXPECT_EQ(vendorName, "Brindlewood");
}

TEST(ApplicationName, IsTheApplicationsToSet) {
    EXPECT_EQ(applicationName, "");
    applicationName = "Corvane Scheduler";
    EXPECT_EQ(applicationName, "Corvane Scheduler");
}

} // namespace
} // namespace base
