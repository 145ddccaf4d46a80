#pragma once

namespace test {

/// Milliseconds; generous, because the machine may be busy.
inline constexpr unsigned patience = 120'000;

} // namespace test
