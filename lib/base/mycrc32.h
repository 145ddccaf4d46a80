// Table of the standard CRC-32 (IEEE 802.3, reflected polynomial 0xEDB88320).
#pragma once

#include <array>
#include <cstdint>

namespace base {

extern const std::array<std::uint32_t, 256> crc32Table;

} // namespace base
