// What the tests of the installer begin and end with, and where the installer puts things.
#pragma once

#include "tests/packaging/setupprocess.h"
#include "tests/program/programtest.h"

#include <string>

namespace driver {

constexpr DWORD refused = 2; ///< the exit code of an installation that did not take place

inline const std::string uninstallKey =
    "Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\Corvane Scheduler\\";

/// A folder of the shell by its CSIDL, with a backslash at its end.
std::string folderOf(int id);

/// A shortcut's path as it was written, a space and its arguments; empty when there is no such shortcut.
std::string shortcutCommand(const std::string& file);

/// Ends all copies of the program at once.
void killCopies();

/// Before and after the test, the program is installed for no one.
class InstallerTest : public ProgramTest {
protected:
    InstallerTest();
    void TearDown() override;

    static std::string setup(const std::string& switches = "");
    static DWORD runSetup(const std::string& switches) { return SetupProcess(setup(switches)).waitForEnd(); }
    /// The uninstaller of a folder, as one process: called otherwise, it starts a copy of itself and ends.
    static std::string uninstaller(const std::string& folder, const std::string& switches = "");

    /// The window of a copy that the installer starts; null when there is none in time.
    static HWND waitForWindow();

    /// Makes what version 1.34 installed for all users, in a folder with the window's title.
    void installOldVersion() const;

    const std::string folder_;    ///< for all users
    const std::string ownFolder_; ///< for one user
    const std::string oldFolder_; ///< of version 1.34
    const std::string autostart_; ///< what starts the program at log-on
    SchedulerProcess installed_;
};

} // namespace driver
