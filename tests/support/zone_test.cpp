// A run in a time zone fails unless the runtime knows that zone: an unknown one would be UTC without a word.
#include "tests/support/instants.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <memory>
#include <string_view>

namespace {

struct Zone {
    std::string_view name;
    int january; ///< minutes east of UTC
    int july;    ///< the same as in January where the clock never changes
};

constexpr Zone zones[] = {
    {"America/New_York", -300, -240}, {"America/St_Johns", -210, -150}, {"Asia/Kathmandu", 345, 345},
    {"Asia/Kolkata", 330, 330},       {"Australia/Sydney", 660, 600},   {"Europe/Berlin", 60, 120},
    {"Pacific/Auckland", 780, 720},
};

int minutesEastOfUtc(std::int32_t seconds) {
    const std::tm local = test::localFields(seconds);
    const std::time_t t = seconds;
    const std::tm utc = *std::gmtime(&t);
    return ((local.tm_yday - utc.tm_yday) * 24 + local.tm_hour - utc.tm_hour) * 60 + local.tm_min - utc.tm_min;
}

/// SCHEDULER_ZONE names the zone; without it any zone will do.
class ZoneOfTheRun : public testing::Environment {
    void SetUp() override {
        const char* const name = std::getenv("SCHEDULER_ZONE");
        if (!name)
            return;
        const auto* const zone = std::ranges::find(zones, std::string_view(name), &Zone::name);
        ASSERT_NE(zone, std::end(zones)) << name << ": add this zone's offsets to the table";
        ASSERT_EQ(minutesEastOfUtc(1'768'478'400), zone->january) << name << ", 2026-01-15 12:00:00 UTC";
        ASSERT_EQ(minutesEastOfUtc(1'784'116'800), zone->july) << name << ", 2026-07-15 12:00:00 UTC";
        // What tests of clock changes go through: two in each year.
        ASSERT_EQ(test::clockChanges().size(), zone->january == zone->july ? 0U : 6U) << name;
    }
};

[[maybe_unused]] testing::Environment* const checked =
    testing::AddGlobalTestEnvironment(std::make_unique<ZoneOfTheRun>().release());

} // namespace
