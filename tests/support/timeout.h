#pragma once

namespace test {

/// In milliseconds. Generous, because the machine may be busy.
inline constexpr unsigned timeout = 120'000;

} // namespace test
