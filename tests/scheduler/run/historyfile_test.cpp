#include "lib/base/base.h"
#include "scheduler/run/historyfile.h"
#include "tests/support/allocations.h"
#include "tests/support/filecontent.h"
#include "tests/support/importedfunctions.h"
#include "tests/support/temporaryfolder.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <shlobj.h>
#include <string>

namespace {

std::string localData; ///< no trailing backslash; if empty, the platform call fails
int requestedFolder = 0;

HRESULT WINAPI simulatedFolder(HWND, int folder, HANDLE, DWORD, LPSTR path) {
    requestedFolder = folder;
    path[localData.copy(path, MAX_PATH - 1)] = '\0';
    return localData.empty() ? E_FAIL : S_OK;
}

} // namespace

SCHEDULER_REPLACE_IMPORT(SHGetFolderPathA, "_SHGetFolderPathA@20", simulatedFolder);

namespace scheduler {
namespace {

using test::fileContent;
using test::writeFile;

const std::string header = "Start\tEnd\tSeconds\tProject\tCause\tOutcome\tPath\r\n";

class HistoryFiles : public testing::Test {
protected:
    HistoryFiles() {
        base::applicationName = "Corvane Scheduler";
        localData = folder_.path().substr(0, folder_.path().size() - 1);
    }

    const test::TemporaryFolder folder_;
    const std::string path_ = folder_.file("Brindlewood\\Corvane Scheduler\\history.txt");
    const std::string olderPath_ = folder_.file("Brindlewood\\Corvane Scheduler\\history.1.txt");
    HistoryFile file_;
};

TEST_F(HistoryFiles, LinesFollowTheHeaderInTheLocalDataFolder) {
    file_.append("first");
    file_.append("second");
    EXPECT_EQ(fileContent(path_), header + "first\r\nsecond\r\n");
    EXPECT_EQ(requestedFolder, CSIDL_LOCAL_APPDATA | CSIDL_FLAG_CREATE);
}

TEST_F(HistoryFiles, LineOverOneMegabyteStartsANewFile) {
    file_.append("first");
    const std::string full(1024 * 1024 - 10, '\n');
    ASSERT_TRUE(writeFile(path_, full));
    file_.append("8 bytes.");
    EXPECT_EQ(fileContent(path_), full + "8 bytes.\r\n");
    file_.append("");
    EXPECT_EQ(fileContent(path_), header + "\r\n");
    EXPECT_EQ(fileContent(olderPath_), full + "8 bytes.\r\n");
}

TEST_F(HistoryFiles, LineIsLostWithoutAFolderOrMemoryAndTheNextIsWritten) {
    file_.append("first");
    const std::string known = localData;
    localData.clear();
    char current[MAX_PATH] = {};
    GetCurrentDirectoryA(sizeof current, current);
    SetCurrentDirectoryA(known.c_str()); // an empty folder name must not mean the current folder
    file_.append("lost");
    SetCurrentDirectoryA(current);
    localData = known;
    {
        const test::RefusedAllocations refused;
        file_.append("lost");
    }
    file_.append("second");
    EXPECT_EQ(fileContent(path_), header + "first\r\nsecond\r\n");
}

} // namespace
} // namespace scheduler
