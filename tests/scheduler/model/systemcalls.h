#pragma once

namespace test {

/// Simulates a crash: ends this process with exit code 1 at its `number`th next system call (1 or more).
void endAtSystemCall(unsigned number);

} // namespace test
