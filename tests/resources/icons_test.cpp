#include "resources/ids.h"
#include "tests/support/moduleresources.h"

#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace {

using test::PackedReader;
using test::resourceBytes;
using testing::ElementsAre;

struct IconImage {
    int size = 0;  // width and height, pixels
    int depth = 0; // bits for each pixel
    std::string_view bytes;
};

std::vector<IconImage> imagesOf(int icon) {
    PackedReader group(resourceBytes(RT_GROUP_ICON, icon));
    group.read<WORD>(); // reserved
    group.read<WORD>(); // an icon, not a cursor
    std::vector<IconImage> images(group.read<WORD>());
    for (IconImage& image : images) {
        const int width = group.read<BYTE>();
        const int height = group.read<BYTE>();
        EXPECT_EQ(width, height);
        image.size = width == 0 ? 256 : width;
        group.read<WORD>(); // palette size, reserved
        group.read<WORD>(); // planes
        image.depth = group.read<WORD>();
        group.read<DWORD>(); // size in bytes
        image.bytes = resourceBytes(RT_ICON, group.read<WORD>());
    }
    return images;
}

// Which pixels of an image are dark, row by row: what is left of it without colour.
std::vector<bool> darkPixels(const IconImage& image) {
    PackedReader reader(image.bytes);
    EXPECT_EQ(reader.read<BITMAPINFOHEADER>().biBitCount, 32);
    std::vector<bool> dark;
    for (int pixel = 0; pixel < image.size * image.size; ++pixel) {
        const auto colour = reader.read<RGBQUAD>(); // with the opacity in rgbReserved
        const int luminance = (colour.rgbRed * 30 + colour.rgbGreen * 59 + colour.rgbBlue * 11) / 100;
        dark.push_back(colour.rgbReserved > 128 && luminance < 80);
    }
    return dark;
}

TEST(Icons, HaveAnImageForEverySizeThatWindowsAsksForAtTheUsualScales) {
    for (const int icon : {IDI_ACTIVE, IDI_SUSPENDED}) {
        std::vector<int> sizes;
        for (const IconImage& image : imagesOf(icon)) {
            sizes.push_back(image.size);
            EXPECT_EQ(image.depth, 32) << image.size;
            EXPECT_EQ(image.bytes.starts_with("\x89PNG"), image.size == 256)
                << "only the largest is compressed";
            HANDLE loaded = LoadImageA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(icon), IMAGE_ICON,
                                       image.size, image.size, LR_DEFAULTCOLOR);
            ASSERT_TRUE(loaded) << image.size;
            DestroyIcon(static_cast<HICON>(loaded));
        }
        EXPECT_THAT(sizes, ElementsAre(16, 20, 24, 32, 48, 256));
    }
}

TEST(Icons, OfBothStatesDifferWithoutColourAtEveryPlainSize) {
    const auto active = imagesOf(IDI_ACTIVE);
    const auto suspended = imagesOf(IDI_SUSPENDED);
    ASSERT_EQ(active.size(), suspended.size());
    for (std::size_t i = 0; i + 1 < active.size(); ++i) {
        const auto hands = darkPixels(active[i]);
        const auto bars = darkPixels(suspended[i]);
        int different = 0;
        for (std::size_t pixel = 0; pixel < hands.size(); ++pixel)
            different += hands[pixel] != bars[pixel];
        EXPECT_GE(different * 100, active[i].size * active[i].size * 8) << "of " << active[i].size;
    }
}

TEST(Icons, TheProgramsOwnHasTheLowestNumber) {
    EXPECT_EQ(IDI_ACTIVE, 100);
    EXPECT_EQ(IDI_SUSPENDED, 130);
}

} // namespace
