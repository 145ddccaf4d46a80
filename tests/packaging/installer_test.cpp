// Installs and removes the program silently and through the installer's pages.

#include "lib/base/files.h"
#include "scheduler/model/schedulefile.h"
#include "tests/packaging/installertest.h"

#include <gtest/gtest.h>

#include <shlobj.h>

using base::fileExists;
using driver::folderOf;
using driver::SetupProcess;
using driver::waitUntil;

namespace {

const std::string waitTime = driver::stateKey + "\\WaitTime";
const std::string autostartPreference = driver::stateKey + "\\Autostart";

class Installer : public driver::InstallerTest {
protected:
    static std::string shortcut(const std::string& name) {
        return folderOf(CSIDL_COMMON_PROGRAMS) + "Corvane Scheduler" + name + ".lnk";
    }
    static std::string autostart() { return base::getString(HKEY_LOCAL_MACHINE, driver::autostartValue); }

    void expectNothingInstalled() const {
        EXPECT_FALSE(fileExists(folder_ + "scheduler.exe"));
        for (const char* name : {"", " Manual", " History"})
            EXPECT_FALSE(fileExists(shortcut(name))) << name;
        std::string text;
        EXPECT_FALSE(base::readString(HKEY_LOCAL_MACHINE, driver::uninstallKey + "DisplayName", text));
        EXPECT_FALSE(base::readString(HKEY_LOCAL_MACHINE, driver::autostartValue, text));
        EXPECT_FALSE(base::readString(HKEY_LOCAL_MACHINE, scheduler::outcomeKey(1) + "Result", text));
    }
};

TEST_F(Installer, InstallsSilentlyAndStartsWithWindows) {
    ASSERT_EQ(runSetup("/S"), 0U);
    EXPECT_TRUE(driver::readBytes(folder_ + "scheduler.exe") ==
                driver::readBytes(driver::buildFolder() + "scheduler.exe"));
    EXPECT_TRUE(fileExists(folder_ + "manual.html"));
    EXPECT_TRUE(fileExists(folder_ + "NOTICES.txt"));
    EXPECT_EQ(driver::shortcutCommand(shortcut("")), folder_ + "scheduler.exe ");
    EXPECT_EQ(driver::shortcutCommand(shortcut(" Manual")), folder_ + "manual.html ");
    EXPECT_EQ(driver::shortcutCommand(shortcut(" History")),
              folderOf(CSIDL_SYSTEM) +
                  "cmd.exe /c start \"\" \"%LOCALAPPDATA%\\Brindlewood\\Corvane Scheduler\\history.txt\"");
    EXPECT_EQ(base::getString(HKEY_LOCAL_MACHINE, driver::uninstallKey + "DisplayName"), "Corvane Scheduler");
    EXPECT_EQ(base::getString(HKEY_LOCAL_MACHINE, driver::uninstallKey + "DisplayVersion"), PACKAGE_VERSION);
    EXPECT_EQ(autostart(), autostart_);
    EXPECT_EQ(FindWindowA("scheduler", nullptr), nullptr) << "only an upgrade starts the program";
}

TEST_F(Installer, SilentRemovalDeletesTheProgramAndKeepsUserData) {
    ASSERT_EQ(runSetup("/S"), 0U);
    driver::saveEntries({driver::pendingEntry()});
    ASSERT_TRUE(installed_.start());
    installed_.kill();
    base::writeString(HKEY_LOCAL_MACHINE, scheduler::outcomeKey(1) + "Result", "left behind");
    base::writeNumber(HKEY_CURRENT_USER, waitTime, 7);

    // Windows runs this command. The uninstaller then starts a copy of itself, which does the work.
    const std::string command =
        base::getString(HKEY_LOCAL_MACHINE, driver::uninstallKey + "QuietUninstallString");
    ASSERT_EQ(SetupProcess(command).waitForEnd(), 0U);
    const std::string vendorFolder = folderOf(CSIDL_PROGRAM_FILES) + "Brindlewood";
    ASSERT_TRUE(
        waitUntil([&] { return GetFileAttributesA(vendorFolder.c_str()) == INVALID_FILE_ATTRIBUTES; }));
    expectNothingInstalled();
    EXPECT_EQ(driver::savedSchedule().size(), 1U);
    EXPECT_EQ(base::getNumber(HKEY_CURRENT_USER, waitTime, 0), 7U);
}

TEST_F(Installer, TheProgramRespectsTheChoiceNotToStartWithWindows) {
    ASSERT_EQ(runSetup("/S /AUTOSTART=0"), 0U);
    EXPECT_EQ(autostart(), "");
    ASSERT_TRUE(installed_.start());
    ASSERT_TRUE(installed_.exit());
    EXPECT_EQ(autostart(), "") << "the program adds no entry when it exits";
    ASSERT_EQ(runSetup("/S"), 0U);
    EXPECT_EQ(autostart(), "") << "an upgrade keeps the choice";
    ASSERT_EQ(runSetup("/S /AUTOSTART=1"), 0U);
    EXPECT_EQ(autostart(), autostart_);
}

TEST_F(Installer, RemovalKeepsTheAutostartOfAnotherCopy) {
    ASSERT_EQ(runSetup("/S"), 0U);
    base::writeString(HKEY_LOCAL_MACHINE, driver::autostartValue, "\"C:\\Unpacked\\scheduler.exe\" /s");
    ASSERT_EQ(SetupProcess(uninstaller(folder_, "/S")).waitForEnd(), 0U);
    EXPECT_EQ(autostart(), "\"C:\\Unpacked\\scheduler.exe\" /s");
}

TEST_F(Installer, ReturnsOneWhenTheUserCancels) {
    const SetupProcess installation(setup());
    installation.press("&Next >", IDCANCEL);
    EXPECT_EQ(installation.waitForEnd(), 1U);
}

TEST_F(Installer, ThePagesInstallAndRemoveEverything) {
    const SetupProcess installation(setup());
    installation.press("&Next >", IDOK);
    installation.press("&Install", IDOK);
    installation.click("Start the Scheduler when Windows starts");
    installation.press("&Finish", IDOK);
    EXPECT_EQ(installation.waitForEnd(), 0U);
    ASSERT_TRUE(fileExists(folder_ + "scheduler.exe"));
    EXPECT_EQ(autostart(), "");
    EXPECT_EQ(base::getNumber(HKEY_CURRENT_USER, autostartPreference, 1), 0U);
    const HWND window = waitForWindow();
    EXPECT_TRUE(waitUntil([&] { return IsWindowVisible(window) != FALSE; }));

    base::writeNumber(HKEY_CURRENT_USER, waitTime, 7);
    const std::string history = folderOf(CSIDL_LOCAL_APPDATA) + "Brindlewood\\Corvane Scheduler";
    SHCreateDirectoryExA(nullptr, history.c_str(), nullptr);
    driver::writeText(history + "\\history.txt", "one line\n");
    for (const char* name : {"bak", "damaged"})
        driver::writeText(folderOf(CSIDL_WINDOWS) + "schedule." + name, "a copy");
    const SetupProcess removal(uninstaller(folder_));
    removal.press("&Uninstall", IDOK);
    removal.press("Do you want to keep", IDNO);
    removal.press("&Close", IDOK);
    EXPECT_EQ(removal.waitForEnd(), 0U);
    EXPECT_FALSE(IsWindow(window)) << "the removal closes the program";
    expectNothingInstalled();
    for (const char* name : {"dat", "bak", "damaged"})
        EXPECT_FALSE(fileExists(folderOf(CSIDL_WINDOWS) + "schedule." + name)) << name;
    EXPECT_FALSE(fileExists(history + "\\history.txt"));
    std::uint32_t number = 0;
    EXPECT_FALSE(base::readNumber(HKEY_CURRENT_USER, waitTime, number));
}

} // namespace
