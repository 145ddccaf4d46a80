#include "lib/base/base.h"
#include "lib/base/opsys.h"
#include "lib/base/paths.h"
#include "scheduler/ui/helpfile.h"
#include "tests/scheduler/ui/platformcalls.h"

#include <gmock/gmock.h>

#include <set>

using test::Override;
using testing::ElementsAre;

namespace scheduler {
namespace {

const std::string folder = base::directoryOf(base::executablePath());

/// The calls with which showHelp() opens files if the program's folder holds only `files`.
std::vector<std::string> openedWith(const std::set<std::string>& files) {
    std::vector<std::string> opened;
    const Override<test::GetFileAttributesACall> attributes([&](LPCSTR path) {
        const std::string text = path;
        return text.starts_with(folder) && files.contains(text.substr(folder.size()))
                   ? DWORD{FILE_ATTRIBUTE_NORMAL}
                   : INVALID_FILE_ATTRIBUTES;
    });
    const Override<test::WinHelpACall> help([&](HWND, LPCSTR file, UINT command, ULONG_PTR keyword) {
        EXPECT_EQ(command, 0x0101U);
        EXPECT_STREQ(reinterpret_cast<const char*>(keyword), "Corvane Scheduler");
        opened.push_back(std::string("WinHelp ") + file);
        return TRUE;
    });
    const Override<test::ShellExecuteACall> shell(
        [&](HWND, LPCSTR verb, LPCSTR file, LPCSTR, LPCSTR, int show) {
            EXPECT_STREQ(verb, "open");
            EXPECT_EQ(show, SW_SHOWNORMAL);
            opened.push_back(std::string("shell ") + file);
            return reinterpret_cast<HINSTANCE>(33); // success
        });
    base::applicationName = "Corvane Scheduler";
    showHelp(nullptr);
    return opened;
}

TEST(HelpFile, OpensInWinHelpAtTheProgramsTitle) {
    EXPECT_THAT(openedWith({"scheduler.hlp"}), ElementsAre("WinHelp " + folder + "scheduler.hlp"));
    EXPECT_THAT(openedWith({"scheduler.hlp", "manual.html"}),
                ElementsAre("WinHelp " + folder + "scheduler.hlp"));
}

TEST(HelpFile, IsReplacedByTheManualIfMissing) {
    EXPECT_THAT(openedWith({"manual.html"}), ElementsAre("shell " + folder + "manual.html"));
}

TEST(HelpFile, IsRequestedIfTheManualIsMissingToo) {
    EXPECT_THAT(openedWith({}), ElementsAre("WinHelp " + folder + "scheduler.hlp"));
}

} // namespace
} // namespace scheduler
