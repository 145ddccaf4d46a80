// Installs, upgrades and removes the program as its user does, silently and through the installer's pages.

#include "lib/base/files.h"
#include "lib/base/opsys.h"
#include "lib/base/processes.h"
#include "lib/base/stackalignment.h"
#include "resources/ids.h"
#include "scheduler/model/schedulefile.h"
#include "tests/program/programtest.h"

#include <gtest/gtest.h>

#include <shlobj.h>

using base::fileExists;
using driver::SchedulerProcess;
using driver::waitUntil;

namespace {

constexpr DWORD refused = 2; // the exit code of an installation that a running copy stands in the way of

const std::string uninstallKey =
    "Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\Corvane Scheduler\\";
const std::string waitTime = driver::stateKey + "\\WaitTime";

std::string folderOf(int id) {
    char path[MAX_PATH]{};
    SHGetFolderPathA(nullptr, id, nullptr, 0, path);
    return path + std::string("\\");
}

struct Page {
    DWORD process = 0;
    std::string text; ///< begins one of the window's texts
    HWND found = nullptr;
};

CALLED_BY_PLATFORM BOOL CALLBACK checkText(HWND child, LPARAM parameter) {
    auto& page = *reinterpret_cast<Page*>(parameter);
    if (IsWindowVisible(child) && driver::textOf(child).compare(0, page.text.size(), page.text) == 0)
        page.found = GetAncestor(child, GA_ROOT);
    return page.found == nullptr;
}

CALLED_BY_PLATFORM BOOL CALLBACK checkPage(HWND window, LPARAM parameter) {
    auto& page = *reinterpret_cast<Page*>(parameter);
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    if (process == page.process && IsWindowVisible(window))
        EnumChildWindows(window, &checkText, parameter);
    return page.found == nullptr;
}

/// An installer or uninstaller that runs beside the test.
class SetupProcess {
public:
    explicit SetupProcess(const std::string& commandLine) {
        STARTUPINFOA startupInfo{};
        startupInfo.cb = sizeof(startupInfo);
        PROCESS_INFORMATION information{};
        base::createProcess(commandLine, startupInfo, information, "", false);
        CloseHandle(information.hThread);
        process_.reset(information.hProcess);
        id_ = information.dwProcessId;
    }
    ~SetupProcess() { TerminateProcess(process_.get(), 1); }
    SetupProcess(const SetupProcess&) = delete;
    SetupProcess& operator=(const SetupProcess&) = delete;

    /// Presses a button of the window that shows a text which begins so, once it is there.
    void press(const std::string& text, int button) const {
        Page page{id_, text, nullptr};
        ASSERT_TRUE(waitUntil([&] {
            EnumWindows(&checkPage, reinterpret_cast<LPARAM>(&page));
            return page.found && IsWindowEnabled(GetDlgItem(page.found, button));
        })) << text;
        PostMessageA(GetDlgItem(page.found, button), BM_CLICK, 0, 0);
    }

    DWORD waitForEnd() const {
        DWORD code = base::processFailed;
        if (WaitForSingleObject(process_.get(), test::patience) == WAIT_OBJECT_0)
            GetExitCodeProcess(process_.get(), &code);
        return code;
    }

private:
    base::KernelHandle process_;
    DWORD id_ = 0;
};

class Installer : public driver::ProgramTest {
protected:
    void TearDown() override {
        installed_.kill();
        if (fileExists(folder_ + "uninstall.exe"))
            SetupProcess(uninstaller("/S")).waitForEnd();
        ProgramTest::TearDown();
    }

    static std::string setup(const std::string& switches = "") {
        return "\"" + driver::buildFolder() + "corvane-scheduler-" PACKAGE_VERSION "-setup.exe\" " + switches;
    }
    /// The uninstaller itself; it else starts a copy of itself and ends at once.
    std::string uninstaller(const std::string& switches = "") const {
        return "\"" + folder_ + "uninstall.exe\" " + switches +
               " _?=" + folder_.substr(0, folder_.size() - 1);
    }

    void expectNothingInstalled() const {
        EXPECT_FALSE(fileExists(folder_ + "scheduler.exe"));
        EXPECT_FALSE(fileExists(shortcut_));
        std::string text;
        EXPECT_FALSE(base::readString(HKEY_LOCAL_MACHINE, uninstallKey + "DisplayName", text));
        EXPECT_FALSE(base::readString(HKEY_LOCAL_MACHINE, driver::autostartValue, text));
        EXPECT_FALSE(base::readString(HKEY_LOCAL_MACHINE, scheduler::outcomeKey(1) + "Result", text));
    }

    const std::string folder_ = folderOf(CSIDL_PROGRAM_FILES) + "Corvane Scheduler\\";
    const std::string shortcut_ = folderOf(CSIDL_COMMON_PROGRAMS) + "Corvane Scheduler.lnk";
    SchedulerProcess installed_{folder_ + "scheduler.exe"};
};

TEST_F(Installer, SilentInstallationStartsAndIsRemovedAgain) {
    ASSERT_EQ(SetupProcess(setup("/S")).waitForEnd(), 0U);
    EXPECT_TRUE(driver::readBytes(folder_ + "scheduler.exe") ==
                driver::readBytes(driver::buildFolder() + "scheduler.exe"));
    EXPECT_TRUE(fileExists(folder_ + "manual.html"));
    EXPECT_TRUE(fileExists(shortcut_));
    EXPECT_EQ(base::getString(HKEY_LOCAL_MACHINE, uninstallKey + "DisplayName"), "Corvane Scheduler");
    EXPECT_EQ(base::getString(HKEY_LOCAL_MACHINE, uninstallKey + "DisplayVersion"), PACKAGE_VERSION);

    driver::saveEntries({driver::pendingEntry()});
    ASSERT_TRUE(installed_.start());
    installed_.kill();
    base::writeString(HKEY_LOCAL_MACHINE, driver::autostartValue, "\"" + folder_ + "scheduler.exe\" /s");
    base::writeString(HKEY_LOCAL_MACHINE, scheduler::outcomeKey(1) + "Result", "left behind");
    base::writeNumber(HKEY_CURRENT_USER, waitTime, 7);

    // As the system's list of programs calls it: the uninstaller goes on in a copy of itself.
    ASSERT_EQ(
        SetupProcess(base::getString(HKEY_LOCAL_MACHINE, uninstallKey + "QuietUninstallString")).waitForEnd(),
        0U);
    ASSERT_TRUE(waitUntil([&] { return !fileExists(folder_.substr(0, folder_.size() - 1)); }));
    expectNothingInstalled();
    EXPECT_EQ(driver::savedSchedule().size(), 1U) << "a silent run keeps it";
    EXPECT_EQ(base::getNumber(HKEY_CURRENT_USER, waitTime, 0), 7U);
}

TEST_F(Installer, UpgradeEndsARunningCopy) {
    ASSERT_EQ(SetupProcess(setup("/S")).waitForEnd(), 0U);
    for (const bool suspended : {false, true}) {
        base::writeNumber(HKEY_CURRENT_USER, driver::stateKey + "\\Suspended", suspended);
        ASSERT_TRUE(installed_.start("/s"));
        ASSERT_EQ(SetupProcess(setup("/S")).waitForEnd(), 0U);
        EXPECT_TRUE(installed_.waitForExit());
        EXPECT_EQ(installed_.exitCode(), 0U) << "it ended by itself";
        EXPECT_TRUE(fileExists(folder_ + "scheduler.exe"));
    }
}

TEST_F(Installer, FirstInstallationEndsACopyThatWasNeverInstalled) {
    ASSERT_TRUE(scheduler_.start("/s"));
    ASSERT_EQ(SetupProcess(setup("/S")).waitForEnd(), 0U);
    EXPECT_TRUE(scheduler_.waitForExit());
    EXPECT_EQ(scheduler_.exitCode(), 0U) << "it ended by itself";
}

TEST_F(Installer, UpgradeLeavesACopyThatIsWantedAsItIs) {
    ASSERT_EQ(SetupProcess(setup("/S")).waitForEnd(), 0U);
    driver::saveEntries({driver::pendingEntry()});
    ASSERT_TRUE(installed_.start());
    const SetupProcess upgrade(setup("/S"));
    ASSERT_TRUE(waitUntil([&] { return installed_.messageBox() != nullptr; })) << "the program asks";
    SchedulerProcess::press(installed_.messageBox(), IDNO);
    EXPECT_EQ(upgrade.waitForEnd(), refused);
    EXPECT_TRUE(installed_.isRunning());
}

TEST_F(Installer, PagesInstallAndRemoveEverything) {
    const SetupProcess installation(setup());
    installation.press("&Install", IDOK);
    installation.press("&Finish", IDOK);
    EXPECT_EQ(installation.waitForEnd(), 0U);
    ASSERT_TRUE(fileExists(folder_ + "scheduler.exe"));
    // What the last page starts is a copy like any other.
    HWND window = nullptr;
    ASSERT_TRUE(waitUntil([&] { return (window = FindWindowA(nullptr, "Corvane Scheduler")) != nullptr; }));
    EXPECT_TRUE(waitUntil([&] { return IsWindowVisible(window) != FALSE; }));

    base::writeNumber(HKEY_CURRENT_USER, waitTime, 7);
    const SetupProcess removal(uninstaller());
    removal.press("&Uninstall", IDOK);
    removal.press("Do you want to keep", IDNO);
    removal.press("&Close", IDOK);
    EXPECT_EQ(removal.waitForEnd(), 0U);
    EXPECT_FALSE(IsWindow(window)) << "the copy has been closed";
    expectNothingInstalled();
    EXPECT_FALSE(fileExists(scheduler::schedulePath()));
    std::uint32_t number = 0;
    EXPECT_FALSE(base::readNumber(HKEY_CURRENT_USER, waitTime, number));
}

} // namespace
