#include "scheduler/ui/startup.h"

#include "lib/base/base.h"
#include "lib/base/opsys.h"
#include "lib/base/trayicon.h"
#include "resources/ids.h"
#include "scheduler/ui/commandswitches.h"
#include "scheduler/ui/framework/messagepump.h"
#include "scheduler/ui/mainwindow.h"
#include "scheduler/ui/messageboxes.h"

#include <exception>
#include <memory>
#include <utility>

namespace scheduler {
namespace {

// Constructed in advance, because it may be shown when memory is short.
const std::string startFailedText = "A system error prevented the scheduler from starting.";

/// Finds the running copy by its exact title. A suspended copy has another title, so it gets no message.
void tellRunningCopy(UINT message, WPARAM wParam, LPARAM lParam) {
    const HWND window = FindWindowA(nullptr, base::applicationName.c_str());
    if (!window)
        return;
    // The user has just started this process, so this process may allow the copy to come to the front.
    AllowSetForegroundWindow(ASFW_ANY);
    SendMessageA(window, message, wParam, lParam);
}

/// Null on any failure.
std::unique_ptr<MainWindow> startWindow(const std::string& commandLine, int showCommand) {
    try {
        auto window = std::make_unique<MainWindow>();
        return window->start(commandLine, showCommand) ? std::move(window) : nullptr;
    } catch (const std::exception& failure) {
        OutputDebugStringA(failure.what());
        return nullptr;
    }
}

} // namespace

int runProgram(const std::string& commandLine, int showCommand) {
    base::applicationName = "Corvane Scheduler";
    if (asksToClose(commandLine)) {
        tellRunningCopy(WM_COMMAND, IDM_EXIT, 0);
        return 0;
    }
    if (base::isAnotherInstanceRunning()) {
        tellRunningCopy(base::WM_TRAY_NOTIFY, 0, WM_LBUTTONDBLCLK);
        return 0;
    }
    if (const auto window = startWindow(commandLine, showCommand)) {
        framework::MessagePump& pump = framework::MessagePump::instance();
        pump.setAccelerators(LoadAcceleratorsA(base::moduleHandle(), MAKEINTRESOURCEA(IDR_ACCELERATORS)));
        return pump.runMainLoop();
    }
    // The window is destroyed by now, so the user cannot work in it while the message is open.
    MessageBoxes().showError(startFailedText);
    return 1;
}

} // namespace scheduler
