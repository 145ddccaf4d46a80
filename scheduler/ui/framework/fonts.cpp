#include "scheduler/ui/framework/fonts.h"

namespace framework {
namespace {

HFONT userFont(LOGFONTA NONCLIENTMETRICSA::*purpose) {
    NONCLIENTMETRICSA metrics{};
    metrics.cbSize = sizeof(metrics);
    if (!SystemParametersInfoA(SPI_GETNONCLIENTMETRICS, sizeof(metrics), &metrics, 0))
        return static_cast<HFONT>(GetStockObject(DEFAULT_GUI_FONT));
    return CreateFontIndirectA(&(metrics.*purpose));
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
