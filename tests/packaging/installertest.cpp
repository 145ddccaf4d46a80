#include "tests/packaging/installertest.h"

#include "lib/base/files.h"
#include "lib/base/opsys.h"

#include <shlobj.h>

namespace driver {

std::string folderOf(int id) {
    char path[MAX_PATH]{};
    SHGetFolderPathA(nullptr, id, nullptr, 0, path);
    return path + std::string("\\");
}

std::string shortcutCommand(const std::string& file) {
    static_cast<void>(CoInitialize(nullptr));
    IShellLinkA* link = nullptr;
    IPersistFile* content = nullptr;
    char path[MAX_PATH]{};
    char arguments[MAX_PATH]{};
    if (SUCCEEDED(CoCreateInstance(CLSID_ShellLink, nullptr, CLSCTX_INPROC_SERVER, IID_IShellLinkA,
                                   reinterpret_cast<void**>(&link))) &&
        SUCCEEDED(link->QueryInterface(IID_IPersistFile, reinterpret_cast<void**>(&content))) &&
        SUCCEEDED(content->Load(std::wstring(file.begin(), file.end()).c_str(), STGM_READ))) {
        link->GetPath(path, sizeof(path), nullptr, SLGP_RAWPATH);
        link->GetArguments(arguments, sizeof(arguments));
    }
    if (content)
        content->Release();
    if (link)
        link->Release();
    CoUninitialize();
    return *path ? path + std::string(" ") + arguments : "";
}

void killAllInstances() {
    while (const HWND window = FindWindowA("scheduler", nullptr)) {
        DWORD id = 0;
        GetWindowThreadProcessId(window, &id);
        const base::KernelHandle process(OpenProcess(PROCESS_TERMINATE | SYNCHRONIZE, FALSE, id));
        TerminateProcess(process.get(), 1);
        WaitForSingleObject(process.get(), INFINITE);
    }
}

InstallerTest::InstallerTest()
    : folder_(folderOf(CSIDL_PROGRAM_FILES) + "Brindlewood\\Scheduler\\"),
      ownFolder_(folderOf(CSIDL_LOCAL_APPDATA) + "Programs\\Brindlewood\\Scheduler\\"),
      oldFolder_(folderOf(CSIDL_PROGRAM_FILES) + "Corvane Scheduler\\"),
      autostart_("\"" + folder_ + "scheduler.exe\" /s"),
      installed_(folder_ + "scheduler.exe") {}

void InstallerTest::TearDown() {
    installed_.kill();
    killAllInstances();
    for (const std::string& folder : {folder_, ownFolder_})
        if (base::fileExists(folder + "uninstall.exe"))
            SetupProcess(uninstaller(folder, "/S")).waitForEnd();
    // Files of installOldVersion() that no upgrade has removed.
    for (const char* file : {"scheduler.exe", "manual.html", "uninstall.exe"})
        DeleteFileA((oldFolder_ + file).c_str());
    RemoveDirectoryA(oldFolder_.c_str());
    base::deleteKey(HKEY_LOCAL_MACHINE, uninstallKey);
    ProgramTest::TearDown();
}

std::string InstallerTest::setup(const std::string& switches) {
    return "\"" + buildFolder() + "corvane-scheduler-" PACKAGE_VERSION "-setup.exe\" " + switches;
}

std::string InstallerTest::uninstaller(const std::string& folder, const std::string& switches) {
    return "\"" + folder + "uninstall.exe\" " + switches + " _?=" + folder.substr(0, folder.size() - 1);
}

HWND InstallerTest::waitForWindow() {
    HWND window = nullptr;
    waitUntil([&] {
        window = FindWindowA("scheduler", nullptr);
        return (GetWindowLongA(window, GWL_EXSTYLE) & WS_EX_ACCEPTFILES) != 0;
    });
    return window;
}

void InstallerTest::installOldVersion() const {
    CreateDirectoryA(oldFolder_.c_str(), nullptr);
    for (const char* file : {"scheduler.exe", "manual.html"})
        CopyFileA((buildFolder() + file).c_str(), (oldFolder_ + file).c_str(), FALSE);
    writeText(oldFolder_ + "uninstall.exe", "of the old version");
    base::writeString(HKEY_LOCAL_MACHINE, uninstallKey + "InstallLocation",
                      oldFolder_.substr(0, oldFolder_.size() - 1));
    base::writeString(HKEY_LOCAL_MACHINE, autostartValue, "\"" + oldFolder_ + "scheduler.exe\" /s");
}

} // namespace driver
