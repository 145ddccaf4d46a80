#pragma once

#include <windows.h>

namespace framework {

/// No template uses these ids.
constexpr int browseButtonIdOf(int editId) {
    return editId + 0x4000;
}

struct BrowseLayout {
    RECT edit{};
    RECT button{};
};

/// Divides `place` between edit and button, in pixels. `textWidth` is the width of the button's text.
BrowseLayout layOutBrowseEdit(const RECT& place, int textWidth);

} // namespace framework
