// Writes, prints and watches the scheduler's file; see the usage in commands.cpp.
#include "tools/schedule/commands.h"

// An exception (out of memory) ends the tool with an error. NOLINTNEXTLINE(bugprone-exception-escape)
int main(int argc, char* argv[]) {
    return runCommand({argv + 1, argv + argc});
}
