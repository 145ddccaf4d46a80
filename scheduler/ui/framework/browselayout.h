// How a browse edit shares its place between the edit and the button.
#pragma once

#include <windows.h>

namespace framework {

/// The button's id, beyond those of templates.
constexpr int browseButtonIdOf(int editId) {
    return editId + 0x4000;
}

struct BrowseLayout {
    RECT edit{};
    RECT button{};
};

/// Pixels throughout. `textWidth` is that of the button's text.
BrowseLayout layOutBrowseEdit(const RECT& place, int textWidth);

} // namespace framework
