#include "tests/support/instants.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <iterator>
#include <string_view>

namespace {

struct Zone {
    std::string_view name;
    int january; ///< minutes east of UTC
    int july;    ///< equals `january` if the clock never changes
};

constexpr Zone zones[] = {
    {"Antarctica/Troll", 0, 120}, {"America/New_York", -300, -240}, {"America/St_Johns", -210, -150},
    {"Asia/Kathmandu", 345, 345}, {"Asia/Kolkata", 330, 330},       {"Australia/Sydney", 660, 600},
    {"Europe/Berlin", 60, 120},   {"Pacific/Auckland", 780, 720},   {"Etc/UTC", 0, 0},
};

int minutesEastOfUtc(std::int32_t seconds) {
    const std::tm local = test::localFields(seconds);
    const std::time_t t = seconds;
    const std::tm utc = *std::gmtime(&t);
    return ((local.tm_yday - utc.tm_yday) * 24 + local.tm_hour - utc.tm_hour) * 60 + local.tm_min -
           utc.tm_min;
}

/// Checks that the runtime uses the zone SCHEDULER_ZONE. Runtimes silently replace unknown zones with UTC.
class ZoneOfTheRun : public testing::Environment {
    void SetUp() override {
        const char* const name = std::getenv("SCHEDULER_ZONE");
        if (!name)
            return;
        const auto* const zone = std::ranges::find(zones, std::string_view(name), &Zone::name);
        ASSERT_NE(zone, std::end(zones)) << name << ": add this zone's offsets to the table";
        ASSERT_EQ(minutesEastOfUtc(1'768'478'400), zone->january) << name << ", 2026-01-15 12:00:00 UTC";
        ASSERT_EQ(minutesEastOfUtc(1'784'116'800), zone->july) << name << ", 2026-07-15 12:00:00 UTC";
        ASSERT_EQ(test::clockChanges().size(), zone->january == zone->july ? 0U : 6U) << name;
    }
};

} // namespace

int main(int argc, char* argv[]) {
    testing::InitGoogleMock(&argc, argv);
    testing::AddGlobalTestEnvironment(new ZoneOfTheRun);
    const int result = RUN_ALL_TESTS();
    if (testing::UnitTest::GetInstance()->test_to_run_count() > 0)
        return result;
    std::cerr << "no test matches the filter " << testing::GTEST_FLAG(filter) << '\n';
    return 1;
}
