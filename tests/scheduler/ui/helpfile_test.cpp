#include "lib/base/base.h"
#include "lib/base/opsys.h"
#include "lib/base/paths.h"
#include "scheduler/ui/helpfile.h"
#include "tests/support/importedfunctions.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

struct HelpCall {
    HWND window = nullptr;
    std::string file;
    UINT command = 0;
    std::string keyword;
};
std::vector<HelpCall> helpCalls;

BOOL WINAPI notedHelp(HWND window, LPCSTR file, UINT command, ULONG_PTR data) {
    helpCalls.push_back({window, file, command, reinterpret_cast<const char*>(data)});
    return TRUE;
}

} // namespace

SCHEDULER_REPLACE_IMPORT(WinHelpA, "_WinHelpA@16", notedHelp);

namespace {

TEST(HelpFile, IsOpenedAtTheProgramsTitle) {
    base::applicationName = "Help Test";
    const HWND window = GetDesktopWindow();
    scheduler::showHelp(window);
    ASSERT_EQ(helpCalls.size(), 1U);
    EXPECT_EQ(helpCalls[0].window, window);
    EXPECT_EQ(helpCalls[0].file, base::directoryOf(base::executablePath()) + "scheduler.hlp");
    EXPECT_EQ(helpCalls[0].command, 0x0101U);
    EXPECT_EQ(helpCalls[0].keyword, "Help Test");
}

} // namespace
