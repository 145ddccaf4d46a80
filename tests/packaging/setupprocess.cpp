#include "tests/packaging/setupprocess.h"

#include "lib/base/processes.h"
#include "lib/base/stackalignment.h"
#include "tests/program/scheduledriver.h"
#include "tests/support/timeout.h"

#include <gtest/gtest.h>

#include <array>

namespace driver {
namespace {

struct ControlSearch {
    DWORD process = 0;
    std::string text; ///< the beginning of the control's text
    HWND found = nullptr;
};

CALLED_BY_PLATFORM BOOL CALLBACK checkControl(HWND control, LPARAM parameter) {
    auto& search = *reinterpret_cast<ControlSearch*>(parameter);
    if (IsWindowVisible(control) && textOf(control).starts_with(search.text))
        search.found = control;
    return search.found == nullptr;
}

CALLED_BY_PLATFORM BOOL CALLBACK checkWindow(HWND window, LPARAM parameter) {
    auto& search = *reinterpret_cast<ControlSearch*>(parameter);
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    if (process == search.process && IsWindowVisible(window))
        EnumChildWindows(window, &checkControl, parameter);
    return search.found == nullptr;
}

HWND findControl(DWORD process, const std::string& text) {
    ControlSearch search{process, text, nullptr};
    EnumWindows(&checkWindow, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

} // namespace

base::KernelHandle limitedToken() {
    base::KernelHandle own;
    OpenProcessToken(GetCurrentProcess(), TOKEN_ALL_ACCESS, own.receive());
    // Wine would elevate the installer again if this token were not derived from the linked, elevated one.
    TOKEN_LINKED_TOKEN linked{};
    DWORD size = sizeof(linked);
    GetTokenInformation(own.get(), TokenLinkedToken, &linked, size, &size);
    const base::KernelHandle elevated(linked.LinkedToken);
    std::array<unsigned char, SECURITY_MAX_SID_SIZE> administrators{};
    size = administrators.size();
    CreateWellKnownSid(WinBuiltinAdministratorsSid, nullptr, administrators.data(), &size);
    SID_AND_ATTRIBUTES disabled{administrators.data(), 0};
    base::KernelHandle limited;
    CreateRestrictedToken(elevated ? elevated.get() : own.get(), DISABLE_MAX_PRIVILEGE, 1, &disabled, 0,
                          nullptr, 0, nullptr, limited.receive());
    return limited;
}

SetupProcess::SetupProcess(const std::string& commandLine, HANDLE token) {
    STARTUPINFOA startupInfo{};
    startupInfo.cb = sizeof(startupInfo);
    PROCESS_INFORMATION information{};
    std::string buffer = commandLine;
    if (token)
        CreateProcessAsUserA(token, nullptr, buffer.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                             &startupInfo, &information);
    else
        base::createProcess(commandLine, startupInfo, information, "", false);
    CloseHandle(information.hThread);
    process_.reset(information.hProcess);
    id_ = information.dwProcessId;
}

SetupProcess::~SetupProcess() {
    TerminateProcess(process_.get(), 1);
}

void SetupProcess::press(const std::string& text, int button) const {
    HWND page = nullptr;
    ASSERT_TRUE(waitUntil([&] {
        page = GetAncestor(findControl(id_, text), GA_ROOT);
        return page && IsWindowEnabled(GetDlgItem(page, button));
    })) << text;
    PostMessageA(GetDlgItem(page, button), BM_CLICK, 0, 0);
}

void SetupProcess::click(const std::string& text) const {
    HWND control = nullptr;
    ASSERT_TRUE(waitUntil([&] { return (control = findControl(id_, text)) != nullptr; })) << text;
    SendMessageA(control, BM_CLICK, 0, 0);
}

bool SetupProcess::shows(const std::string& text) const {
    return findControl(id_, text) != nullptr;
}

DWORD SetupProcess::waitForEnd() const {
    DWORD code = base::processFailed;
    if (WaitForSingleObject(process_.get(), test::timeout) == WAIT_OBJECT_0)
        GetExitCodeProcess(process_.get(), &code);
    return code;
}

} // namespace driver
