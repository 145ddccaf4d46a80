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

// Made before anything can be short of memory.
const std::string startFailedText = "A system error prevented the scheduler from starting.";

/// The running copy is known by its exact title, so a suspended one, whose title says so, is not found and
/// the message goes nowhere.
void tellRunningCopy(UINT message, WPARAM wParam, LPARAM lParam) {
    const HWND window = FindWindowA(nullptr, base::applicationName.c_str());
    if (!window)
        return;
    // The copy may come to the front on behalf of this one, which the user has just started.
    AllowSetForegroundWindow(ASFW_ANY);
    SendMessageA(window, message, wParam, lParam);
}

/// The main window with its engine going; null when the start failed, whatever of it did.
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
    // Once the window is gone: nobody is to work with it behind the message.
    MessageBoxes().showError(startFailedText);
    return 1;
}

} // namespace scheduler
