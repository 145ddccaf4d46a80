// The size, place and look of hints, in pixels.
#pragma once

#include <windows.h>

#include <string>

namespace framework {

enum class HintStyle {
    Rounded, ///< a balloon; breaks long lines
    Plain    ///< a bar with one line
};

/// Pale yellow, as 0xBBGGRR.
inline constexpr COLORREF hintColour = 0xDFFFFF;

/// The text's size in the hint font, with the part of the margins that hintRectangle does not add. The lines
/// of a rounded hint fit into `maxWidth` unless a word is too long.
SIZE hintExtent(const std::string& text, HintStyle style, int maxWidth);

/// The place for a hint: centred below `point`, a little larger than `extent` and moved into the work area. A
/// hint that is too large keeps its top left corner inside.
RECT hintRectangle(SIZE extent, POINT point, const RECT& workArea);

/// The widest extent whose hint fits into the work area.
int maxHintWidth(const RECT& workArea);

/// The window's region, owned by the caller; null for the whole rectangle.
[[nodiscard]] HRGN hintOutline(HintStyle style, SIZE window);

void drawHint(HDC context, const RECT& area, const std::string& text, HintStyle style);

} // namespace framework
