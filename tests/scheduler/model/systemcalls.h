// Ends this process at one of its system calls, as a crash or a user may.
#pragma once

namespace test {

/// The process ends with exit code 1 in place of its call number `number`, counted from 1 and from now on.
void endAtSystemCall(unsigned number);

} // namespace test
