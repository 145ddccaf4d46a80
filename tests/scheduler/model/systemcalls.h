#pragma once

namespace test {

/// Simulates a crash: ends this process with exit code 1 at its `number`th system call from now on, at
/// least 1.
void endAtSystemCall(unsigned number);

} // namespace test
