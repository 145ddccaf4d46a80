#include "scheduler/ui/framework/fonts.h"
#include "scheduler/ui/framework/gdihandles.h"
#include "scheduler/ui/framework/hintface.h"
#include "tests/support/gdiobjects.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

using framework::HintStyle;

constexpr RECT workArea{0, 0, 1024, 740};

::testing::AssertionResult isAt(const RECT& place, const RECT& expected) {
    if (EqualRect(&place, &expected))
        return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure()
           << place.left << ',' << place.top << " to " << place.right << ',' << place.bottom;
}

TEST(HintRectangle, IsTwentyPixelsBelowThePointCentredAndGrown) {
    // 100 by 13 at 450..550, 220..233, and 6 more at the sides, 2 above and below.
    EXPECT_TRUE(isAt(framework::hintRectangle({100, 13}, {500, 200}, workArea), {444, 218, 556, 235}));
    EXPECT_TRUE(isAt(framework::hintRectangle({101, 13}, {500, 200}, workArea), {444, 218, 557, 235}));
}

TEST(HintRectangle, StaysInsideTheWorkArea) {
    const struct {
        POINT point;
        RECT expected;
    } rows[] = {
        {{0, 200}, {0, 218, 112, 235}},       {{56, 200}, {0, 218, 112, 235}},
        {{57, 200}, {1, 218, 113, 235}},      {{-500, 200}, {0, 218, 112, 235}},
        {{1023, 200}, {912, 218, 1024, 235}}, {{968, 200}, {912, 218, 1024, 235}},
        {{967, 200}, {911, 218, 1023, 235}},  {{500, 739}, {444, 723, 556, 740}},
        {{500, 705}, {444, 723, 556, 740}},   {{500, 704}, {444, 722, 556, 739}},
        {{500, -100}, {444, 0, 556, 17}},     {{0, -100}, {0, 0, 112, 17}},
        {{1023, 739}, {912, 723, 1024, 740}}, {{5000, 5000}, {912, 723, 1024, 740}},
    };
    for (const auto& row : rows)
        EXPECT_TRUE(isAt(framework::hintRectangle({100, 13}, row.point, workArea), row.expected))
            << "for " << row.point.x << ',' << row.point.y;
}

TEST(HintRectangle, StaysInsideAWorkAreaBesideABar) {
    constexpr RECT beside{60, 30, 800, 600};
    EXPECT_TRUE(isAt(framework::hintRectangle({100, 13}, {0, 0}, beside), {60, 30, 172, 47}));
    EXPECT_TRUE(isAt(framework::hintRectangle({100, 13}, {800, 600}, beside), {688, 583, 800, 600}));
}

TEST(HintRectangle, WhatIsTooLargeKeepsItsBeginningInside) {
    EXPECT_TRUE(isAt(framework::hintRectangle({2000, 900}, {500, 200}, workArea), {0, 0, 2012, 904}));
}

TEST(HintExtent, IsThatOfTheTextInTheHintFont) {
    const framework::MemoryContext context(CreateCompatibleDC(nullptr));
    const framework::Selection font(context.get(), framework::hintFont());
    for (const std::string text :
         {"x", "A hint & its text", "Spider project, next run tomorrow at 5:30 PM"}) {
        SIZE expected{};
        GetTextExtentPoint32A(context.get(), text.c_str(), static_cast<int>(text.size()), &expected);
        const SIZE plain = framework::hintExtent(text, HintStyle::Plain, 1000);
        EXPECT_EQ(plain.cx, expected.cx) << text;
        EXPECT_EQ(plain.cy, expected.cy) << text;
        const SIZE rounded = framework::hintExtent(text, HintStyle::Rounded, 1000);
        EXPECT_EQ(rounded.cx, expected.cx + 28) << "with its margins: " << text;
        EXPECT_EQ(rounded.cy, expected.cy + 36) << text;
    }
}

TEST(HintExtent, OnlyTheRoundedStyleBreaksLines) {
    const std::string text = "several words that do not fit into one narrow line";
    const SIZE plain = framework::hintExtent(text, HintStyle::Plain, 140);
    EXPECT_GT(plain.cx, 140);
    const SIZE rounded = framework::hintExtent(text, HintStyle::Rounded, 140);
    EXPECT_LE(rounded.cx, 140);
    EXPECT_GE(rounded.cy - 36, 2 * plain.cy);
    const SIZE lines = framework::hintExtent("one\ntwo\nthree", HintStyle::Rounded, 1000);
    EXPECT_EQ(lines.cy - 36, 3 * plain.cy);
}

TEST(HintExtent, AMaximalRoundedHintFitsIntoTheWorkArea) {
    std::string words;
    for (int i = 0; i < 300; ++i)
        words += "word ";
    const SIZE extent = framework::hintExtent(words, HintStyle::Rounded, framework::maxHintWidth(workArea));
    const RECT place = framework::hintRectangle(extent, {500, 200}, workArea);
    EXPECT_GE(place.left, workArea.left);
    EXPECT_LE(place.right, workArea.right);
}

TEST(HintFont, IsMadeOnce) {
    EXPECT_NE(framework::hintFont(), nullptr);
    EXPECT_EQ(framework::hintFont(), framework::hintFont());
}

/// A picture of a hint in memory.
class Picture {
public:
    Picture(const std::string& text, HintStyle style, int width, int height)
        : context_(CreateCompatibleDC(nullptr)) {
        BITMAPINFO info{};
        info.bmiHeader.biSize = sizeof(info.bmiHeader);
        info.bmiHeader.biWidth = width;
        info.bmiHeader.biHeight = -height;
        info.bmiHeader.biPlanes = 1;
        info.bmiHeader.biBitCount = 32;
        void* pixels = nullptr;
        bitmap_.reset(CreateDIBSection(context_.get(), &info, DIB_RGB_COLORS, &pixels, nullptr, 0));
        const framework::Selection surface(context_.get(), bitmap_.get());
        framework::drawHint(context_.get(), {0, 0, width, height}, text, style);
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x)
                if (const COLORREF colour = GetPixel(context_.get(), x, y);
                    isInk(colour, x, y, width, height))
                    expandInk(x, y);
                else if (x == width / 2 && y == 3)
                    background = colour;
        corner = GetPixel(context_.get(), 0, 0);
        edge = GetPixel(context_.get(), 0, height / 2);
    }

    RECT ink{10000, 10000, -1, -1}; ///< what the text covers, the outline left out
    COLORREF background = 0;
    COLORREF corner = 0;
    COLORREF edge = 0;

private:
    static bool isInk(COLORREF colour, int x, int y, int width, int height) {
        const bool isNearEdge = x < 8 || y < 2 || x >= width - 8 || y >= height - 2;
        return !isNearEdge && colour != framework::hintColour;
    }
    void expandInk(LONG x, LONG y) {
        ink.left = std::min(ink.left, x);
        ink.top = std::min(ink.top, y);
        ink.right = std::max(ink.right, x + 1);
        ink.bottom = std::max(ink.bottom, y + 1);
    }

    framework::MemoryContext context_;
    framework::Bitmap bitmap_;
};

TEST(DrawHint, PlainIsAFilledRectangleWithItsTextInTheMiddle) {
    const Picture picture("HxH", HintStyle::Plain, 200, 41);
    EXPECT_EQ(picture.background, 0xDFFFFFU);
    EXPECT_EQ(picture.corner, RGB(0, 0, 0));
    EXPECT_NEAR(picture.ink.left, 200 - picture.ink.right, 4);
    EXPECT_NEAR(picture.ink.top, 41 - picture.ink.bottom, 4);
}

TEST(DrawHint, RoundedHasItsCornersCutAndItsTextTwentyPixelsInside) {
    const Picture picture("HxH", HintStyle::Rounded, 200, 80);
    EXPECT_EQ(picture.background, 0xDFFFFFU);
    EXPECT_EQ(picture.corner, 0xDFFFFFU) << "outside the round corner";
    EXPECT_EQ(picture.edge, RGB(0, 0, 0));
    EXPECT_GE(picture.ink.left, 20);
    EXPECT_LE(picture.ink.left, 23);
    EXPECT_GE(picture.ink.top, 20);
    EXPECT_LE(picture.ink.top, 26);
}

TEST(DrawHint, AHintAsLargeAsItsTextAsksForHasTheTextInItsMiddle) {
    const std::string text = "HHH words\nHHH";
    const SIZE extent = framework::hintExtent(text, HintStyle::Rounded, 1000);
    const RECT place = framework::hintRectangle(extent, {500, 200}, workArea);
    const LONG width = place.right - place.left;
    const LONG height = place.bottom - place.top;
    const Picture picture(text, HintStyle::Rounded, width, height);
    EXPECT_NEAR(picture.ink.left, 20, 3);
    EXPECT_NEAR(width - picture.ink.right, 20, 6); // Wine draws narrower than it measures
    EXPECT_NEAR(picture.ink.top, 20, 5);
    EXPECT_NEAR(height - picture.ink.bottom, 20, 5);
}

TEST(DrawHint, TextIsShownAsItIs) {
    const Picture marked("&H", HintStyle::Plain, 200, 41);
    const Picture unmarked("H", HintStyle::Plain, 200, 41);
    EXPECT_GT(marked.ink.right - marked.ink.left, unmarked.ink.right - unmarked.ink.left);
    const Picture lines("H\nH", HintStyle::Rounded, 200, 100);
    const Picture line("H", HintStyle::Rounded, 200, 100);
    EXPECT_GT(lines.ink.bottom, line.ink.bottom + 5);
}

TEST(DrawHint, LeavesNoObjectsBehind) {
    const auto drawAll = [] {
        Picture("one", HintStyle::Plain, 100, 20);
        Picture("two words", HintStyle::Rounded, 100, 80);
        framework::hintExtent("three", HintStyle::Rounded, 100);
    };
    drawAll();
    const unsigned before = test::gdiObjectCount();
    for (int i = 0; i < 50; ++i)
        drawAll();
    EXPECT_EQ(test::gdiObjectCount(), before);
    const framework::MemoryContext counted(CreateCompatibleDC(nullptr));
    EXPECT_GT(test::gdiObjectCount(), before) << "the count counts";
}

TEST(HintOutline, IsRoundForTheRoundedStyleOnly) {
    EXPECT_EQ(framework::hintOutline(HintStyle::Plain, {100, 50}), nullptr);
    const HRGN outline = framework::hintOutline(HintStyle::Rounded, {100, 50});
    EXPECT_FALSE(PtInRegion(outline, 0, 0));
    EXPECT_FALSE(PtInRegion(outline, 99, 49));
    EXPECT_TRUE(PtInRegion(outline, 50, 0));
    EXPECT_TRUE(PtInRegion(outline, 99, 25));
    EXPECT_TRUE(PtInRegion(outline, 50, 49));
    DeleteObject(outline);
}

} // namespace
