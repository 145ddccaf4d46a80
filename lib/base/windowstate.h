// A window's saved place, as those keep it who do not know what it means.
#pragma once

#include <array>
#include <cstddef>

namespace base {

using WindowState = std::array<std::byte, 61>;

} // namespace base
