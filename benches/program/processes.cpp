#include "benches/program/processes.h"

#include "lib/base/processes.h"
#include "lib/base/registry.h"
#include "tests/program/scheduledriver.h"

#include <chrono>
#include <psapi.h>
#include <utility>

namespace bench {
namespace {

constexpr auto timeout = std::chrono::minutes(2);

} // namespace

WindowProcess::WindowProcess(const std::string& commandLine, std::string windowClass, WORD showCommand)
    : windowClass_(std::move(windowClass)) {
    STARTUPINFOA startupInfo{};
    startupInfo.cb = sizeof(startupInfo);
    startupInfo.dwFlags = STARTF_USESHOWWINDOW;
    startupInfo.wShowWindow = showCommand;
    PROCESS_INFORMATION information{};
    base::createProcess(commandLine, startupInfo, information, "", false);
    process_.reset(information.hProcess);
    CloseHandle(information.hThread);
}

WindowProcess::~WindowProcess() {
    TerminateProcess(process_.get(), 0);
    WaitForSingleObject(process_.get(), INFINITE);
}

bool WindowProcess::waitUntilShown() {
    return waitForWindow(true);
}

bool WindowProcess::waitUntilCreated() {
    return waitForWindow(false);
}

bool WindowProcess::waitForWindow(bool visible) {
    const auto end = std::chrono::steady_clock::now() + timeout;
    while (!(window_ = FindWindowA(windowClass_.c_str(), nullptr)) ||
           (visible && !IsWindowVisible(window_))) {
        if (std::chrono::steady_clock::now() > end)
            return false;
        Sleep(1);
    }
    SendMessageA(window_, WM_NULL, 0, 0);
    return true;
}

std::string schedulerCommand() {
    return '"' + driver::buildFolder() + "scheduler.exe\"";
}

std::string emptyProgramCommand(std::size_t rows) {
    return '"' + driver::buildFolder() + "benches\\program\\emptyprogram.exe\" " + std::to_string(rows);
}

void clearPreferences() {
    base::deleteKey(HKEY_CURRENT_USER, "Software\\Brindlewood\\scheduler");
}

} // namespace bench
