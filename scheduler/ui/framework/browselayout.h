#pragma once

#include <windows.h>

namespace framework {

/// An id that no template uses.
constexpr int browseButtonIdOf(int editId) {
    return editId + 0x4000;
}

struct BrowseLayout {
    RECT edit{};
    RECT button{};
};

/// Divides `place`. All values are pixels; `textWidth` is that of the button's text.
BrowseLayout layOutBrowseEdit(const RECT& place, int textWidth);

} // namespace framework
