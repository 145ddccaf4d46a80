#include "scheduler/ui/framework/hintface.h"

#include "scheduler/ui/framework/fonts.h"
#include "scheduler/ui/framework/gdihandles.h"

#include <algorithm>

namespace framework {
namespace {

constexpr int distanceBelowPoint = 20;
constexpr int horizontalGrowth = 6;
constexpr int verticalGrowth = 2;
constexpr int cornerDiameter = 20;
constexpr int roundedMargin = 20;

/// The DrawText flags that affect the size.
UINT measureFormat(HintStyle style) {
    const UINT lines = style == HintStyle::Rounded ? DT_WORDBREAK : DT_SINGLELINE;
    return lines | DT_EXPANDTABS | DT_NOPREFIX;
}

UINT drawFormat(HintStyle style) {
    const UINT place = style == HintStyle::Rounded ? 0 : DT_CENTER | DT_VCENTER;
    return measureFormat(style) | place;
}

/// The shift that moves low..high into lowest..highest. If low..high is too long, it starts at lowest.
LONG shiftInside(LONG low, LONG high, LONG lowest, LONG highest) {
    return std::max(lowest - low, std::min(highest - high, 0L));
}

} // namespace

SIZE hintExtent(const std::string& text, HintStyle style, int maxWidth) {
    // The part of a rounded hint's margins that hintRectangle does not add.
    const bool isRounded = style == HintStyle::Rounded;
    const int horizontalPadding = isRounded ? roundedMargin - horizontalGrowth : 0;
    const int verticalPadding = isRounded ? roundedMargin - verticalGrowth : 0;
    const MemoryContext context(CreateCompatibleDC(nullptr));
    const Selection font(context.get(), hintFont());
    RECT area{};
    area.right = std::max(maxWidth - 2 * horizontalPadding, 1);
    DrawTextA(context.get(), text.c_str(), -1, &area, measureFormat(style) | DT_CALCRECT);
    return {area.right - area.left + 2 * horizontalPadding, area.bottom - area.top + 2 * verticalPadding};
}

RECT hintRectangle(SIZE extent, POINT point, const RECT& workArea) {
    RECT place{};
    place.left = point.x - extent.cx / 2;
    place.top = point.y + distanceBelowPoint;
    place.right = place.left + extent.cx;
    place.bottom = place.top + extent.cy;
    InflateRect(&place, horizontalGrowth, verticalGrowth);
    OffsetRect(&place, shiftInside(place.left, place.right, workArea.left, workArea.right),
               shiftInside(place.top, place.bottom, workArea.top, workArea.bottom));
    return place;
}

int maxHintWidth(const RECT& workArea) {
    return workArea.right - workArea.left - 2 * horizontalGrowth;
}

HRGN hintOutline(HintStyle style, SIZE window) {
    if (style == HintStyle::Plain)
        return nullptr;
    // A region is one pixel smaller at the right and bottom than a rectangle drawn with the same corners.
    return CreateRoundRectRgn(0, 0, window.cx + 1, window.cy + 1, cornerDiameter, cornerDiameter);
}

void drawHint(HDC context, const RECT& area, const std::string& text, HintStyle style) {
    const Selection font(context, hintFont());
    const Selection brush(context, GetStockObject(DC_BRUSH));
    const Selection pen(context, GetStockObject(BLACK_PEN));
    SetDCBrushColor(context, hintColour);
    SetBkMode(context, TRANSPARENT);
    // Not the user's tool tip colour, which may be too pale on this background.
    SetTextColor(context, RGB(0, 0, 0));
    FillRect(context, &area, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
    RECT textArea = area;
    if (style == HintStyle::Rounded) {
        RoundRect(context, area.left, area.top, area.right, area.bottom, cornerDiameter, cornerDiameter);
        InflateRect(&textArea, -roundedMargin, -roundedMargin);
    } else {
        Rectangle(context, area.left, area.top, area.right, area.bottom);
    }
    DrawTextA(context, text.c_str(), -1, &textArea, drawFormat(style));
}

} // namespace framework
