#include "scheduler/ui/framework/browselayout.h"

namespace framework {

BrowseLayout layOutBrowseEdit(const RECT& place, int textWidth) {
    constexpr int aroundText = 10;
    constexpr int gap = 4;
    constexpr int minButtonHeight = 23;

    BrowseLayout layout{place, place};
    layout.button.left = place.right - (textWidth + aroundText);
    layout.edit.right = layout.button.left - gap;
    const int height = place.bottom - place.top;
    if (height < minButtonHeight) {
        layout.button.top = place.top + (height - minButtonHeight) / 2;
        layout.button.bottom = layout.button.top + minButtonHeight;
    }
    return layout;
}

} // namespace framework
