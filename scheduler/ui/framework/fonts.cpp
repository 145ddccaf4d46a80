#include "scheduler/ui/framework/fonts.h"

namespace framework {
namespace {

HFONT userFont(LOGFONTA NONCLIENTMETRICSA::*purpose) {
    NONCLIENTMETRICSA metrics{};
    metrics.cbSize = sizeof(metrics);
    HFONT font = nullptr;
    if (SystemParametersInfoA(SPI_GETNONCLIENTMETRICS, sizeof(metrics), &metrics, 0))
        font = CreateFontIndirectA(&(metrics.*purpose));
    return font ? font : static_cast<HFONT>(GetStockObject(DEFAULT_GUI_FONT));
}

} // namespace

HFONT messageFont() {
    static const HFONT font = userFont(&NONCLIENTMETRICSA::lfMessageFont);
    return font;
}

HFONT hintFont() {
    static const HFONT font = userFont(&NONCLIENTMETRICSA::lfStatusFont);
    return font;
}

} // namespace framework
