#include "scheduler/ui/rowimages.h"
#include "tests/scheduler/ui/platformcalls.h"

#include <gtest/gtest.h>

#include <utility>

namespace {

TEST(RowImageList, UsesADrawnSizeWithoutScaling) {
    for (const auto& [wanted, drawn] :
         {std::pair{12, 16}, {16, 16}, {19, 16}, {20, 20}, {24, 24}, {28, 24}, {32, 32}, {40, 32}}) {
        const scheduler::ImageList images = scheduler::makeRowImages(wanted);
        int width = 0;
        int height = 0;
        ASSERT_TRUE(ImageList_GetIconSize(images.get(), &width, &height));
        EXPECT_EQ(width, drawn);
        EXPECT_EQ(height, drawn);
        EXPECT_EQ(ImageList_GetImageCount(images.get()), 4);
    }
}

TEST(RowImageList, IsEmptyUnlessAllImagesLoad) {
    int loaded = 0;
    const test::Override<test::LoadImageACall> loading([&](auto... arguments) -> HANDLE {
        return ++loaded == 2 ? nullptr : test::LoadImageACall::original(arguments...);
    });
    EXPECT_FALSE(scheduler::makeRowImages(16));
}

} // namespace
