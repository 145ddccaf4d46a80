// How large a hint is, where it stands and what it looks like.
#pragma once

#include <windows.h>

#include <string>

namespace framework {

enum class HintStyle {
    Rounded, ///< a balloon, whose text may have several lines
    Plain    ///< a bar with one line
};

/// Pale yellow: a colour's bytes are blue, green, red.
inline constexpr COLORREF hintColour = 0xDFFFFF;

/// The size in pixels that the text takes in the hint font, and for a rounded hint the room that its margins
/// take beyond what hintRectangle adds. A rounded hint breaks lines to be no wider than `maxWidth`, unless a
/// single word is.
SIZE hintExtent(const std::string& text, HintStyle style, int maxWidth);

/// The place of a hint of that extent for a point of the screen: below the point and centred on it, a little
/// larger than its extent, and moved inside the work area. What is too large for that keeps its top left
/// corner inside.
RECT hintRectangle(SIZE extent, POINT point, const RECT& workArea);

/// The widest extent whose hint fits into the work area.
int maxHintWidth(const RECT& workArea);

/// The outline of a window of that size; null for the whole rectangle. The caller's to delete.
[[nodiscard]] HRGN hintOutline(HintStyle style, SIZE window);

/// Paints a hint over the whole of `area`.
void drawHint(HDC context, const RECT& area, const std::string& text, HintStyle style);

} // namespace framework
