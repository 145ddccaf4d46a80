#pragma once

namespace test {

/// Timeout in milliseconds. Generous, because the machine may be busy.
inline constexpr unsigned timeout = 120'000;

} // namespace test
