// Writes, prints and watches the schedule file of this Windows; see the usage in commands.cpp.
#include "tools/schedule/commands.h"

// Without memory the tool ends with an error. NOLINTNEXTLINE(bugprone-exception-escape)
int main(int argc, char* argv[]) {
    return runCommand({argv + 1, argv + argc});
}
