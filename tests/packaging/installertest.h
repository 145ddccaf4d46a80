#pragma once

#include "tests/packaging/setupprocess.h"
#include "tests/program/programtest.h"

#include <string>

namespace driver {

constexpr DWORD refused = 2; ///< exit code of an incomplete installation or removal

inline const std::string uninstallKey =
    "Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\Corvane Scheduler\\";

/// The path of the shell folder with the CSIDL `id`, with a trailing backslash.
std::string folderOf(int id);

/// A shortcut's unexpanded target path, a space and its arguments; empty if there is no such shortcut.
std::string shortcutCommand(const std::string& file);

void killAllInstances();

/// Removes every installation and kills every instance after the test.
class InstallerTest : public ProgramTest {
protected:
    InstallerTest();
    void TearDown() override;

    static std::string setup(const std::string& switches = "");
    static DWORD runSetup(const std::string& switches) { return SetupProcess(setup(switches)).waitForEnd(); }
    /// The command that removes an installation without starting a copy of the uninstaller (option _?=).
    static std::string uninstaller(const std::string& folder, const std::string& switches = "");

    /// Waits until the instance that the installer starts is ready. Null if it has no window in time.
    static HWND waitForWindow();

    /// Imitates an earlier version, installed for all users in a folder named after the program's title.
    void installOldVersion() const;

    const std::string folder_;    ///< for all users
    const std::string ownFolder_; ///< for one user
    const std::string oldFolder_; ///< of installOldVersion()
    const std::string autostart_; ///< the command in the Run key
    SchedulerProcess installed_;
};

} // namespace driver
