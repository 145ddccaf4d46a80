// Installs over an earlier version, and while the program runs.

#include "lib/base/files.h"
#include "tests/packaging/installertest.h"

#include <gtest/gtest.h>

#include <sddl.h>
#include <shlobj.h>

using base::fileExists;
using driver::refused;
using driver::SetupProcess;
using driver::waitUntil;

namespace {

class Upgrade : public driver::InstallerTest {
protected:
    /// Waits for the instance that the installer starts after closing the old one.
    static void expectHiddenInstance() {
        const HWND window = waitForWindow();
        ASSERT_NE(window, nullptr);
        EXPECT_FALSE(IsWindowVisible(window));
    }
};

TEST_F(Upgrade, RestartsARunningInstanceHidden) {
    ASSERT_EQ(runSetup("/S"), 0U);
    for (const bool suspended : {false, true}) {
        base::writeNumber(HKEY_CURRENT_USER, driver::stateKey + "\\Suspended", suspended);
        ASSERT_TRUE(installed_.start());
        ASSERT_EQ(runSetup("/S"), 0U);
        EXPECT_TRUE(installed_.waitForExit());
        EXPECT_EQ(installed_.exitCode(), 0U) << "it exited normally";
        expectHiddenInstance();
        driver::killAllInstances();
    }
}

// An Explorer window that shows a folder with the program's name has this title.
TEST_F(Upgrade, IgnoresOtherWindowsWithTheProgramsTitle) {
    ASSERT_TRUE(scheduler_.start());
    const HWND other =
        CreateWindowExA(0, "Static", "Corvane Scheduler", 0, 0, 0, 0, 0, nullptr, nullptr, nullptr, nullptr);
    EXPECT_EQ(runSetup("/S"), 0U);
    EXPECT_TRUE(scheduler_.waitForExit());
    expectHiddenInstance();
    DestroyWindow(other);
}

TEST_F(Upgrade, DoesNotStartEntriesAtStartup) {
    driver::saveEntries({driver::sleeping("run:notepad.exe")});
    ASSERT_TRUE(scheduler_.start());
    ASSERT_EQ(runSetup("/S"), 0U);
    EXPECT_TRUE(scheduler_.waitForExit());
    const driver::ListDriver list(waitForWindow());
    EXPECT_EQ(list.cell(0, 3), "next startup");
}

TEST_F(Upgrade, StopsIfTheUserKeepsTheProgramRunning) {
    ASSERT_EQ(runSetup("/S"), 0U);
    driver::saveEntries({driver::pendingEntry()});
    ASSERT_TRUE(installed_.start());
    const SetupProcess upgrade(setup("/S"));
    ASSERT_TRUE(waitUntil([&] { return installed_.messageBox() != nullptr; })) << "the program asks";
    driver::SchedulerProcess::press(installed_.messageBox(), IDNO);
    EXPECT_EQ(upgrade.waitForEnd(), refused);
    EXPECT_TRUE(installed_.isRunning());
}

// Simulates an instance of another user: its mutex is not visible here, but its file is open.
TEST_F(Upgrade, FailsWhileTheOldProgramFileIsInUse) {
    installOldVersion();
    const std::string program = oldFolder_ + "scheduler.exe";
    const base::FileHandle file(
        CreateFileA(program.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr));
    EXPECT_EQ(runSetup("/S"), refused);
    EXPECT_TRUE(fileExists(program));
    EXPECT_FALSE(fileExists(folder_ + "scheduler.exe"));
}

TEST_F(Upgrade, RestartsTheOldProgramWhenAFileCannotBeReplaced) {
    ASSERT_EQ(runSetup("/S"), 0U);
    ASSERT_TRUE(installed_.start());
    const base::FileHandle file(CreateFileA((folder_ + "manual.html").c_str(), GENERIC_READ, FILE_SHARE_READ,
                                            nullptr, OPEN_EXISTING, 0, nullptr));
    EXPECT_EQ(runSetup("/S"), refused);
    EXPECT_TRUE(installed_.waitForExit());
    expectHiddenInstance();
}

TEST_F(Upgrade, ThePagesDoNotCoverTheProgramsQuestion) {
    ASSERT_EQ(runSetup("/S"), 0U);
    driver::saveEntries({driver::pendingEntry()});
    ASSERT_TRUE(installed_.start());
    const SetupProcess upgrade(setup());
    upgrade.press("&Next >", IDOK);
    upgrade.press("&Install", IDOK);
    ASSERT_TRUE(waitUntil([&] { return installed_.messageBox() != nullptr; })) << "the program asks";
    EXPECT_TRUE(waitUntil([&] { return !upgrade.shows("Please wait"); }));
    driver::SchedulerProcess::press(installed_.messageBox(), IDYES);
    EXPECT_TRUE(installed_.waitForExit());
    upgrade.press("&Finish", IDOK);
    EXPECT_EQ(upgrade.waitForEnd(), 0U);
    EXPECT_NE(waitForWindow(), nullptr);
}

TEST_F(Upgrade, FailsWhileAnInstanceWithMoreRightsRuns) {
    SECURITY_ATTRIBUTES attributes{sizeof(attributes), nullptr, FALSE};
    ASSERT_TRUE(ConvertStringSecurityDescriptorToSecurityDescriptorA(
        "O:SYG:SYD:(A;;GA;;;SY)", SDDL_REVISION_1, &attributes.lpSecurityDescriptor, nullptr));
    const base::KernelHandle mutex(CreateMutexA(&attributes, FALSE, "Brindlewood Corvane Scheduler"));
    LocalFree(attributes.lpSecurityDescriptor);
    EXPECT_EQ(runSetup("/S"), refused);
    EXPECT_FALSE(fileExists(folder_ + "scheduler.exe"));
}

TEST_F(Upgrade, MovesTheProgramOutOfAFolderNamedLikeTheWindow) {
    installOldVersion();
    driver::SchedulerProcess old(oldFolder_ + "scheduler.exe");
    ASSERT_TRUE(old.start());
    ASSERT_EQ(runSetup("/S"), 0U);
    EXPECT_TRUE(old.waitForExit());
    EXPECT_EQ(GetFileAttributesA(oldFolder_.c_str()), INVALID_FILE_ATTRIBUTES);
    EXPECT_TRUE(fileExists(folder_ + "scheduler.exe"));
    EXPECT_EQ(base::getString(HKEY_LOCAL_MACHINE, driver::autostartValue), autostart_);
    expectHiddenInstance();
}

TEST_F(Upgrade, KeepsAFolderThatTheUserChose) {
    const std::string chosen = driver::makeTestFolder();
    ASSERT_EQ(runSetup("/S /D=" + chosen.substr(0, chosen.size() - 1)), 0U);
    DeleteFileA((chosen + "manual.html").c_str());
    ASSERT_EQ(runSetup("/S"), 0U);
    EXPECT_TRUE(fileExists(chosen + "manual.html"));
    EXPECT_FALSE(fileExists(folder_ + "scheduler.exe"));
    EXPECT_EQ(SetupProcess(uninstaller(chosen, "/S")).waitForEnd(), 0U);
}

} // namespace
