#include "scheduler/ui/framework/browselayout.h"

namespace framework {

BrowseLayout layOutBrowseEdit(const RECT& place, int textWidth) {
    constexpr int aroundText = 10;
    constexpr int gap = 4;
    constexpr int lowestButton = 23;

    BrowseLayout layout{place, place};
    layout.button.left = place.right - (textWidth + aroundText);
    layout.edit.right = layout.button.left - gap;
    const int height = place.bottom - place.top;
    if (height < lowestButton) {
        layout.button.top = place.top + (height - lowestButton) / 2;
        layout.button.bottom = layout.button.top + lowestButton;
    }
    return layout;
}

} // namespace framework
