#include "lib/base/mycrc32.h"

#include "lib/base/sourceregistration.h"

namespace base {
namespace {

[[maybe_unused]] const bool registered = registerSourceFile(__FILE__, RELEASE_DATE);

consteval std::array<std::uint32_t, 256> makeTable() {
    std::array<std::uint32_t, 256> table{};
    for (std::uint32_t index = 0; index < table.size(); ++index) {
        std::uint32_t remainder = index;
        for (int bit = 0; bit < 8; ++bit)
            remainder = (remainder & 1) ? remainder >> 1 ^ 0xEDB88320 : remainder >> 1;
        table[index] = remainder;
    }
    return table;
}

} // namespace

constinit const std::array<std::uint32_t, 256> crc32Table = makeTable();

} // namespace base
