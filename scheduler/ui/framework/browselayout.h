// How a browse edit shares its place between the edit and the button.
#pragma once

#include <windows.h>

namespace framework {

struct BrowseLayout {
    RECT edit{};
    RECT button{};
};

/// Pixels throughout. `textWidth` is that of the button's text.
BrowseLayout layOutBrowseEdit(const RECT& place, int textWidth);

} // namespace framework
