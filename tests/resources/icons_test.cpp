#include "resources/ids.h"
#include "tests/support/moduleresources.h"

#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace {

using test::PackedReader;
using test::resourceBytes;
using testing::ElementsAre;

struct IconImage {
    int size = 0;  // width and height in pixels
    int depth = 0; // bits per pixel
    std::string_view bytes;
};

std::vector<IconImage> imagesOf(int icon) {
    PackedReader group(resourceBytes(RT_GROUP_ICON, icon));
    group.read<WORD>(); // reserved
    group.read<WORD>(); // type
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

HICON load(int icon, int size) {
    return static_cast<HICON>(LoadImageA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(icon), IMAGE_ICON, size,
                                         size, LR_DEFAULTCOLOR));
}

/// Which pixels of an icon are dark, row by row.
std::vector<bool> darkPixels(int icon, int size) {
    ICONINFO parts{};
    const HICON loaded = load(icon, size);
    EXPECT_TRUE(GetIconInfo(loaded, &parts));
    std::vector<RGBQUAD> pixels(static_cast<std::size_t>(size * size));
    BITMAPINFO format{};
    format.bmiHeader = {sizeof(BITMAPINFOHEADER), size, size, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    const HDC screen = GetDC(nullptr);
    EXPECT_EQ(
        GetDIBits(screen, parts.hbmColor, 0, static_cast<UINT>(size), pixels.data(), &format, DIB_RGB_COLORS),
        size);
    ReleaseDC(nullptr, screen);
    DeleteObject(parts.hbmColor);
    DeleteObject(parts.hbmMask);
    DestroyIcon(loaded);
    std::vector<bool> dark;
    for (const RGBQUAD& colour : pixels) { // rgbReserved is the opacity
        const int luminance = (colour.rgbRed * 30 + colour.rgbGreen * 59 + colour.rgbBlue * 11) / 100;
        dark.push_back(colour.rgbReserved > 128 && luminance < 80);
    }
    return dark;
}

TEST(Icons, HaveAnImageForEachSizeAtTheUsualScales) {
    for (const int icon : {IDI_ACTIVE, IDI_SUSPENDED}) {
        std::vector<int> sizes;
        for (const IconImage& image : imagesOf(icon)) {
            sizes.push_back(image.size);
            EXPECT_EQ(image.depth, 32) << image.size;
            EXPECT_EQ(image.bytes.starts_with("\x89PNG"), image.size >= 40) << image.size;
            const HICON loaded = load(icon, image.size);
            ASSERT_TRUE(loaded) << image.size;
            DestroyIcon(loaded);
        }
        EXPECT_THAT(sizes, ElementsAre(16, 20, 24, 28, 32, 40, 48, 64, 256));
    }
}

TEST(Icons, ForActiveAndSuspendedDifferWithoutColour) {
    for (const int size : {16, 20, 24, 28, 32, 40, 48, 64}) {
        const auto hands = darkPixels(IDI_ACTIVE, size);
        const auto bars = darkPixels(IDI_SUSPENDED, size);
        int different = 0;
        for (std::size_t pixel = 0; pixel < hands.size(); ++pixel)
            different += hands[pixel] != bars[pixel];
        EXPECT_GE(different * 100, size * size * 8) << size;
    }
}

constexpr int rowIcons[] = {IDI_ROW_RUNNING, IDI_ROW_WAITING, IDI_ROW_DISABLED, IDI_ROW_RESULT};

/// Which pixels of an icon contrast with a grey of brightness `background`.
std::vector<bool> pixelsSeenOn(BYTE background, int icon, int size) {
    const BITMAPINFO format{{sizeof(BITMAPINFOHEADER), size, size, 1, 32, BI_RGB, 0, 0, 0, 0, 0}, {}};
    void* bits = nullptr;
    const HBITMAP picture = CreateDIBSection(nullptr, &format, DIB_RGB_COLORS, &bits, nullptr, 0);
    const std::span pixels(static_cast<RGBQUAD*>(bits), static_cast<std::size_t>(size * size));
    std::ranges::fill(pixels, RGBQUAD{background, background, background, 0});
    const HDC context = CreateCompatibleDC(nullptr);
    const HGDIOBJ before = SelectObject(context, picture);
    HANDLE loaded = LoadImageA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(icon), IMAGE_ICON, size, size,
                               LR_DEFAULTCOLOR);
    DrawIconEx(context, 0, 0, static_cast<HICON>(loaded), size, size, 0, nullptr, DI_NORMAL);
    std::vector<bool> seen;
    for (const RGBQUAD& colour : pixels) {
        const int luminance = (colour.rgbRed * 30 + colour.rgbGreen * 59 + colour.rgbBlue * 11) / 100;
        seen.push_back(std::abs(luminance - background) > 100);
    }
    DestroyIcon(static_cast<HICON>(loaded));
    SelectObject(context, before);
    DeleteDC(context);
    DeleteObject(picture);
    return seen;
}

TEST(Icons, ForRowsHaveAnImageForEachSmallSize) {
    for (const int icon : rowIcons) {
        std::vector<int> sizes;
        for (const IconImage& image : imagesOf(icon)) {
            sizes.push_back(image.size);
            EXPECT_EQ(image.depth, 32) << "Windows reads PNG images of this depth only";
        }
        EXPECT_THAT(sizes, ElementsAre(16, 20, 24, 32)) << icon;
    }
}

TEST(Icons, ForRowsAreVisibleAndDifferWithoutColourOnWhiteAndBlack) {
    for (const BYTE background : {BYTE{255}, BYTE{0}})
        for (const int size : {16, 20, 24, 32})
            for (const int icon : rowIcons) {
                const auto seen = pixelsSeenOn(background, icon, size);
                EXPECT_GE(std::ranges::count(seen, true) * 100, size * size * 15)
                    << icon << " of " << size << " on " << int{background};
                for (int other = IDI_ROW_RUNNING; other < icon; ++other) {
                    const auto otherSeen = pixelsSeenOn(background, other, size);
                    int different = 0;
                    for (std::size_t pixel = 0; pixel < seen.size(); ++pixel)
                        different += seen[pixel] != otherSeen[pixel];
                    EXPECT_GE(different * 100, size * size * 15)
                        << icon << " and " << other << " of " << size << " on " << int{background};
                }
            }
}

} // namespace
