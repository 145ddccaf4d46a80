#pragma once

#include "tests/packaging/setupprocess.h"
#include "tests/program/programtest.h"

#include <string>

namespace driver {

constexpr DWORD refused = 2; ///< exit code of an installer that installed nothing

inline const std::string uninstallKey =
    "Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\Corvane Scheduler\\";

/// A folder of the shell by its CSIDL, with a trailing backslash.
std::string folderOf(int id);

/// A shortcut's path as written, a space and its arguments; empty when there is no such shortcut.
std::string shortcutCommand(const std::string& file);

void killAllInstances();

/// Removes every installation and kills every instance after the test.
class InstallerTest : public ProgramTest {
protected:
    InstallerTest();
    void TearDown() override;

    static std::string setup(const std::string& switches = "");
    static DWORD runSetup(const std::string& switches) { return SetupProcess(setup(switches)).waitForEnd(); }
    /// The command that uninstalls a folder. With _?= the uninstaller does not start a copy of itself.
    static std::string uninstaller(const std::string& folder, const std::string& switches = "");

    /// The window of the instance that the installer starts; null after a time limit.
    static HWND waitForWindow();

    /// Creates what version 1.34 installed for all users, in a folder named after the program's title.
    void installOldVersion() const;

    const std::string folder_;    ///< for all users
    const std::string ownFolder_; ///< for one user
    const std::string oldFolder_; ///< of version 1.34
    const std::string autostart_; ///< the value of the Run key
    SchedulerProcess installed_;
};

} // namespace driver
