#include "scheduler/ui/columnfit.h"

#include <gmock/gmock.h>

namespace {

using scheduler::fitColumns;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(ColumnFit, SpareSpaceIsDistributedEqually) {
    EXPECT_THAT(fitColumns({50, 200, 100}, 380), ElementsAre(60, 210, 110));
    EXPECT_THAT(fitColumns({50, 200, 100}, 350), ElementsAre(50, 200, 100));
    EXPECT_THAT(fitColumns({50, 200, 100}, 352), ElementsAre(50, 200, 100)) << "no fraction of a pixel";
}

TEST(ColumnFit, TheWidestColumnsShrinkWhenSpaceIsShort) {
    EXPECT_THAT(fitColumns({50, 300, 100}, 350), ElementsAre(50, 200, 100));
    EXPECT_THAT(fitColumns({500, 50, 9000, 100}, 550), ElementsAre(200, 50, 200, 100));
    EXPECT_THAT(fitColumns({500, 500, 500}, 100), ElementsAre(33, 33, 34)) << "no pixel is lost";
}

TEST(ColumnFit, HugeWidthsDoNotOverflow) {
    EXPECT_THAT(fitColumns({0x7FFFFFFF, 0x7FFFFFFF, 10}, 110), ElementsAre(50, 50, 10));
}

TEST(ColumnFit, WithoutSpaceEveryWidthIsZero) {
    EXPECT_THAT(fitColumns({50, 100}, -20), ElementsAre(0, 0));
    EXPECT_THAT(fitColumns({}, 100), IsEmpty());
}

} // namespace
