#include "scheduler/ui/framework/fonts.h"
#include "scheduler/ui/framework/hintface.h"
#include "tests/scheduler/ui/framework/drawnitem.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace {

using framework::drawHint;
using framework::hintExtent;
using framework::hintRectangle;
using framework::HintStyle;

constexpr COLORREF black = RGB(0, 0, 0);
constexpr RECT screen{0, 0, 1024, 740};

TEST(HintFace, IsCentredBelowItsPointInsideTheWorkArea) {
    constexpr RECT besideABar{60, 30, 800, 600};
    const struct {
        POINT point;
        RECT expected;
        RECT workArea = screen;
        SIZE extent = {100, 13};
    } rows[] = {
        {{500, 200}, {444, 218, 556, 235}}, // text at 450..550, 220..233; margins 6 and 2
        {{500, 200}, {444, 218, 557, 235}, screen, {101, 13}},
        {{500, 200}, {0, 0, 2012, 904}, screen, {2000, 900}}, // too large: the top left corner stays inside
        {{0, 0}, {60, 30, 172, 47}, besideABar},
        {{800, 600}, {688, 583, 800, 600}, besideABar},
        {{56, 200}, {0, 218, 112, 235}},
        {{57, 200}, {1, 218, 113, 235}},
        {{-500, 200}, {0, 218, 112, 235}},
        {{968, 200}, {912, 218, 1024, 235}},
        {{967, 200}, {911, 218, 1023, 235}},
        {{500, 705}, {444, 723, 556, 740}},
        {{500, 704}, {444, 722, 556, 739}},
        {{500, -100}, {444, 0, 556, 17}},
        {{5000, 5000}, {912, 723, 1024, 740}}};
    for (const auto& row : rows) {
        const RECT place = hintRectangle(row.extent, row.point, row.workArea);
        EXPECT_TRUE(EqualRect(&place, &row.expected))
            << place.left << ',' << place.top << " for " << row.point.x << ',' << row.point.y;
    }
}

SIZE sizeOfLine(const std::string& text) {
    const framework::MemoryContext context(CreateCompatibleDC(nullptr));
    const framework::Selection font(context.get(), framework::hintFont());
    SIZE size{};
    GetTextExtentPoint32A(context.get(), text.c_str(), static_cast<int>(text.size()), &size);
    return size;
}

TEST(HintFace, ExtentIsTheSizeOfItsTextPlusMarginsIfRounded) {
    for (const std::string text :
         {"x", "A hint & its text", "Spider project, next run tomorrow at 5:30 PM"}) {
        const SIZE plain = hintExtent(text, HintStyle::Plain, 1000);
        EXPECT_EQ(plain.cx, sizeOfLine(text).cx) << text;
        EXPECT_EQ(plain.cy, sizeOfLine(text).cy) << text;
        const SIZE rounded = hintExtent(text, HintStyle::Rounded, 1000);
        EXPECT_EQ(rounded.cx, sizeOfLine(text).cx + 28) << text;
        EXPECT_EQ(rounded.cy, sizeOfLine(text).cy + 36) << text;
    }
    EXPECT_EQ(framework::hintFont(), framework::hintFont()) << "the font is created once";
}

TEST(HintFace, OnlyTheRoundedStyleWrapsLines) {
    const std::string text = "several words that do not fit into one narrow line";
    EXPECT_GT(hintExtent(text, HintStyle::Plain, 140).cx, 140);
    const SIZE rounded = hintExtent(text, HintStyle::Rounded, 140);
    EXPECT_LE(rounded.cx, 140);
    EXPECT_GE(rounded.cy - 36, 2 * sizeOfLine(text).cy);
    EXPECT_EQ(hintExtent("one\ntwo\nthree", HintStyle::Rounded, 1000).cy - 36, 3 * sizeOfLine("one").cy);
}

TEST(HintFace, ARoundedHintOfMaximumWidthFitsIntoTheWorkArea) {
    std::string words;
    for (int i = 0; i < 300; ++i)
        words += "word ";
    const SIZE extent = hintExtent(words, HintStyle::Rounded, framework::maxHintWidth(screen));
    const RECT place = hintRectangle(extent, {500, 200}, screen);
    EXPECT_GE(place.left, screen.left);
    EXPECT_LE(place.right, screen.right);
}

class Picture : public test::Canvas {
public:
    Picture(const std::string& text, HintStyle style, SIZE size) : Canvas(size.cx, size.cy) {
        drawHint(context(), {0, 0, size.cx, size.cy}, text, style);
        for (int y = 2; y < size.cy - 2; ++y)
            for (int x = 8; x < size.cx - 8; ++x)
                if (at(x, y) != framework::hintColour) {
                    ink.left = std::min<LONG>(ink.left, x);
                    ink.top = std::min<LONG>(ink.top, y);
                    ink.right = std::max<LONG>(ink.right, x + 1);
                    ink.bottom = std::max<LONG>(ink.bottom, y + 1);
                }
    }
    LONG inkWidth() const { return ink.right - ink.left; }

    RECT ink{10000, 10000, -1, -1}; ///< bounds of the text, without the outline
};

TEST(HintFace, APlainHintIsAFilledRectangleWithCentredText) {
    const Picture picture("HxH", HintStyle::Plain, {200, 41});
    EXPECT_EQ(picture.at(100, 3), 0xDFFFFFU);
    EXPECT_EQ(picture.at(0, 0), black);
    EXPECT_NEAR(picture.ink.left, 200 - picture.ink.right, 4);
    EXPECT_NEAR(picture.ink.top, 41 - picture.ink.bottom, 4);
}

TEST(HintFace, ARoundedHintHasTenPixelCornersAndATwentyPixelMargin) {
    const Picture picture("HxH", HintStyle::Rounded, {200, 80});
    EXPECT_EQ(picture.at(100, 3), 0xDFFFFFU);
    EXPECT_EQ(picture.at(0, 40), black);
    // An arc with a radius of ten pixels meets the edge at pixel 7 and the diagonal at pixel 3.
    EXPECT_EQ(picture.at(6, 0), 0xDFFFFFU);
    EXPECT_EQ(picture.at(7, 0), black);
    EXPECT_EQ(picture.at(2, 2), 0xDFFFFFU);
    EXPECT_EQ(picture.at(3, 3), black);
    EXPECT_GE(picture.ink.left, 20);
    EXPECT_LE(picture.ink.left, 23);
    EXPECT_GE(picture.ink.top, 20);
    EXPECT_LE(picture.ink.top, 26);
}

TEST(HintFace, DrawsAmpersandsAndTheLinesOfARoundedHint) {
    const auto inkOf = [](const char* text, HintStyle style) { return Picture(text, style, {200, 100}).ink; };
    const RECT plain = inkOf("H", HintStyle::Plain);
    EXPECT_LT(inkOf("&H", HintStyle::Plain).left, plain.left);
    EXPECT_GT(inkOf("H\nH", HintStyle::Rounded).bottom, inkOf("H", HintStyle::Rounded).bottom + 5);
}

TEST(HintFace, TabStopsAreEightCharactersApart) {
    const framework::MemoryContext context(CreateCompatibleDC(nullptr));
    const framework::Selection font(context.get(), framework::hintFont());
    TEXTMETRICA metrics{};
    GetTextMetricsA(context.get(), &metrics);
    const LONG tab = 8 * metrics.tmAveCharWidth;
    for (const auto& [style, margin] : {std::pair{HintStyle::Plain, 0}, std::pair{HintStyle::Rounded, 28}}) {
        EXPECT_EQ(hintExtent("H\tH", style, 1000).cx, tab + sizeOfLine("H").cx + margin);
        const LONG width = Picture("H\tH", style, {200, 80}).inkWidth();
        EXPECT_NEAR(width, tab + Picture("H", style, {200, 80}).inkWidth(), 2);
    }
}

TEST(HintFace, TheRegionOfARoundedHintFollowsItsCorners) {
    EXPECT_EQ(framework::hintOutline(HintStyle::Plain, {100, 50}), nullptr);
    const HRGN outline = framework::hintOutline(HintStyle::Rounded, {100, 50});
    for (const POINT outside : {POINT{0, 0}, POINT{99, 49}, POINT{6, 0}, POINT{2, 2}})
        EXPECT_FALSE(PtInRegion(outline, outside.x, outside.y)) << outside.x;
    for (const POINT inside : {POINT{7, 0}, POINT{3, 3}, POINT{99, 25}, POINT{50, 49}})
        EXPECT_TRUE(PtInRegion(outline, inside.x, inside.y)) << inside.x;
    DeleteObject(outline);
}

} // namespace
