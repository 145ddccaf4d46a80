// A window's saved placement. Only the window framework knows its layout.
#pragma once

#include <array>
#include <cstddef>

namespace base {

using WindowState = std::array<std::byte, 61>;

} // namespace base
