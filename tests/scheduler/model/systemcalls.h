#pragma once

namespace test {

/// Simulates a crash. The `number`th system call from now (1 or more) ends this process with exit code 1.
void endAtSystemCall(unsigned number);

} // namespace test
