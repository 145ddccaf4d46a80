// Installs the program for one user, with and without administrator rights.

#include "lib/base/files.h"
#include "tests/packaging/installertest.h"

#include <gtest/gtest.h>

#include <shlobj.h>

using base::fileExists;
using driver::folderOf;
using driver::refused;
using driver::SetupProcess;

namespace {

class InstallerForOneUser : public driver::InstallerTest {
protected:
    static DWORD runLimited(const std::string& switches) {
        return SetupProcess(setup(switches), driver::limitedToken().get()).waitForEnd();
    }

    const std::string shortcut_ = folderOf(CSIDL_PROGRAMS) + "Corvane Scheduler.lnk";
    const std::string startup_ = folderOf(CSIDL_STARTUP) + "Corvane Scheduler.lnk";
};

TEST_F(InstallerForOneUser, NeedsNoAdministrator) {
    ASSERT_EQ(runLimited("/S"), 0U);
    EXPECT_TRUE(fileExists(ownFolder_ + "scheduler.exe"));
    EXPECT_EQ(driver::shortcutCommand(shortcut_), ownFolder_ + "scheduler.exe ");
    EXPECT_EQ(driver::shortcutCommand(startup_), ownFolder_ + "scheduler.exe /s");
    EXPECT_EQ(base::getString(HKEY_CURRENT_USER, driver::uninstallKey + "DisplayName"), "Corvane Scheduler");
    EXPECT_FALSE(fileExists(folder_ + "scheduler.exe"));
    EXPECT_EQ(base::getString(HKEY_LOCAL_MACHINE, driver::uninstallKey + "DisplayName"), "");
    EXPECT_EQ(base::getString(HKEY_LOCAL_MACHINE, driver::autostartValue), "");

    ASSERT_EQ(SetupProcess(uninstaller(ownFolder_, "/S"), driver::limitedToken().get()).waitForEnd(), 0U);
    EXPECT_FALSE(fileExists(ownFolder_ + "scheduler.exe"));
    EXPECT_FALSE(fileExists(shortcut_));
    EXPECT_FALSE(fileExists(startup_));
    EXPECT_EQ(base::getString(HKEY_CURRENT_USER, driver::uninstallKey + "DisplayName"), "");
}

TEST_F(InstallerForOneUser, AnUpgradeRestartsTheRunningInstance) {
    ASSERT_EQ(runLimited("/S"), 0U);
    driver::SchedulerProcess own(ownFolder_ + "scheduler.exe");
    ASSERT_TRUE(own.start());
    ASSERT_EQ(runLimited("/S"), 0U);
    EXPECT_TRUE(own.waitForExit());
    const HWND window = waitForWindow();
    ASSERT_NE(window, nullptr);
    EXPECT_FALSE(IsWindowVisible(window));
}

TEST_F(InstallerForOneUser, AddsNoAutostartIfOneForAllUsersExists) {
    base::writeString(HKEY_LOCAL_MACHINE, driver::autostartValue, autostart_);
    ASSERT_EQ(runSetup("/S /CurrentUser"), 0U);
    EXPECT_TRUE(fileExists(ownFolder_ + "scheduler.exe"));
    EXPECT_FALSE(fileExists(startup_));
    EXPECT_EQ(base::getString(HKEY_LOCAL_MACHINE, driver::autostartValue), autostart_);
}

TEST_F(InstallerForOneUser, AnUpgradeCanRemoveTheAutostart) {
    ASSERT_EQ(runSetup("/S /CurrentUser"), 0U);
    ASSERT_EQ(runSetup("/S /AUTOSTART=0"), 0U) << "an upgrade for the same user";
    EXPECT_FALSE(fileExists(folder_ + "scheduler.exe"));
    EXPECT_FALSE(fileExists(startup_));
}

TEST_F(InstallerForOneUser, ALimitedUserCannotInstallForAllUsers) {
    EXPECT_EQ(runLimited("/S /AllUsers"), refused);
    EXPECT_FALSE(fileExists(folder_ + "scheduler.exe"));
    EXPECT_FALSE(fileExists(ownFolder_ + "scheduler.exe"));
}

TEST_F(InstallerForOneUser, ALimitedUserCannotUpgradeOrRemoveAnInstallationForAllUsers) {
    ASSERT_EQ(runSetup("/S"), 0U);
    EXPECT_EQ(runLimited("/S"), refused) << "an upgrade";
    EXPECT_FALSE(fileExists(ownFolder_ + "scheduler.exe"));
    EXPECT_EQ(SetupProcess(uninstaller(folder_, "/S"), driver::limitedToken().get()).waitForEnd(), refused);
    EXPECT_TRUE(fileExists(folder_ + "scheduler.exe"));
}

TEST_F(InstallerForOneUser, AnInstallationForAllUsersReplacesTheUsersOwn) {
    ASSERT_EQ(runSetup("/S /CurrentUser"), 0U);
    ASSERT_EQ(runSetup("/S /AllUsers"), 0U);
    EXPECT_TRUE(fileExists(folder_ + "scheduler.exe"));
    EXPECT_FALSE(fileExists(ownFolder_ + "scheduler.exe"));
    EXPECT_FALSE(fileExists(startup_));
    EXPECT_EQ(base::getString(HKEY_LOCAL_MACHINE, driver::autostartValue), autostart_);
}

TEST_F(InstallerForOneUser, ThePagesInstallForTheChosenUser) {
    const SetupProcess installation(setup());
    installation.click("Install just for me");
    installation.press("&Next >", IDOK);
    installation.press("&Install", IDOK);
    installation.click("Start the Corvane Scheduler");
    installation.press("&Finish", IDOK);
    EXPECT_EQ(installation.waitForEnd(), 0U);
    EXPECT_TRUE(fileExists(ownFolder_ + "scheduler.exe"));
    EXPECT_EQ(driver::shortcutCommand(startup_), ownFolder_ + "scheduler.exe /s");
    EXPECT_EQ(FindWindowA("scheduler", nullptr), nullptr);
}

} // namespace
