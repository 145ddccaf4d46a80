#include "tests/support/environment.h"

#include <gtest/gtest.h>

namespace {

using Seeds = std::vector<std::uint32_t>;

TEST(EnvironmentNumber, AcceptsAnyNumberIncludingZero) {
    EXPECT_EQ(test::numberIn("7"), 7U);
    EXPECT_EQ(test::numberIn("0"), 0U);
    for (const char* const none : {static_cast<const char*>(nullptr), "", "seven"})
        EXPECT_EQ(test::numberIn(none), std::nullopt);
    EXPECT_EQ(test::environmentNumber("SCHEDULER_NEVER_SET"), std::nullopt);
}

TEST(Seeds, UseOnlyTheRequestedSeedIncludingZero) {
    EXPECT_EQ(test::seedsFor(0, 20), Seeds{0});
    EXPECT_EQ(test::seedsFor(7, 20), Seeds{7});
}

TEST(Seeds, DefaultToTheGivenCountStartingAtOne) {
    EXPECT_EQ(test::seedsFor(std::nullopt, 3), (Seeds{1, 2, 3}));
    EXPECT_EQ(test::seedsFor(std::nullopt, 0), Seeds{});
}

} // namespace
