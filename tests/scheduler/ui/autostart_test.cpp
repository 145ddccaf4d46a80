#include "lib/base/base.h"
#include "lib/base/opsys.h"
#include "lib/base/registry.h"
#include "scheduler/ui/autostart.h"

#include <gtest/gtest.h>

namespace {

TEST(Autostart, WritesTheQuotedProgramWithItsSwitchUnderTheProgramsTitle) {
    base::applicationName = "Autostart Test";
    const std::string value = "Software\\Microsoft\\Windows\\CurrentVersion\\Run\\Autostart Test";
    scheduler::applyAutostart(true);
    EXPECT_EQ(base::getString(HKEY_LOCAL_MACHINE, value), "\"" + base::executablePath() + "\" /s");
    scheduler::applyAutostart(false);
    EXPECT_EQ(base::getString(HKEY_LOCAL_MACHINE, value), "");
    scheduler::applyAutostart(false); // nothing to delete is no failure
}

} // namespace
