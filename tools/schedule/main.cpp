// Writes, prints and watches the scheduler's file; see the usage in commands.cpp.
#include "tools/schedule/commands.h"

// If memory runs out, the tool ends with an error. NOLINTNEXTLINE(bugprone-exception-escape)
int main(int argc, char* argv[]) {
    return runCommand({argv + 1, argv + argc});
}
