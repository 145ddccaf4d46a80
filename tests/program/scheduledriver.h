// Runs the real program, with the real registry and file.
#pragma once

#include "lib/base/handles.h"
#include "scheduler/model/schedulefile.h"
#include "scheduler/model/schedulelist.h"
#include "tests/support/patience.h"

#include <windows.h>

#include <chrono>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace driver {

/// Polls until `condition` holds; false after `limit`.
bool waitUntil(const std::function<bool()>& condition,
               std::chrono::milliseconds limit = std::chrono::milliseconds(test::patience));

/// The folder that holds the built program; with a backslash at its end.
std::string buildFolder();

/// A fresh folder below the temporary one, with a backslash at its end.
std::string makeTestFolder();

void writeText(const std::string& path, const std::string& text);
std::string readBytes(const std::string& path);
std::vector<std::string> readLines(const std::string& path);

std::string textOf(HWND window);

GUITHREADINFO inputStateOf(HWND window);

/// One copy of scheduler.exe, killed on destruction.
class SchedulerProcess {
public:
    SchedulerProcess();
    explicit SchedulerProcess(std::string program) : program_(std::move(program)) {}
    ~SchedulerProcess();
    SchedulerProcess(const SchedulerProcess&) = delete;
    SchedulerProcess& operator=(const SchedulerProcess&) = delete;

    /// Waits until the window is ready.
    bool start(const std::string& switches = "");
    void launch(const std::string& switches = "");
    bool waitForWindow();
    /// Starts a copy that ends by itself; returns its exit code.
    static DWORD runToEnd(const std::string& switches);

    HWND window() const { return window_; }
    bool isRunning() const;
    bool waitForExit();
    DWORD exitCode() const;
    void kill(bool mayHaveEnded = false);

    /// Exits, answering Yes to the question if it is asked. False when the program does not end.
    bool exit();

    void command(int id) const;

    /// Returns when the window has handled the tick.
    void tick() const { SendMessageA(window_, WM_TIMER, 0, 0); }

    /// The open message box or dialog; null when there is none.
    HWND messageBox() const;
    /// The visible dialogs and message boxes, the uppermost first.
    std::vector<HWND> dialogs() const;
    bool isMenuOpen() const;
    /// Null while the program is not in the foreground.
    HWND focused() const { return inputStateOf(window_).hwndFocus; }
    static std::string textOfBox(HWND box);
    static void press(HWND box, int button);

private:
    /// Fails when the program crashed, or ended without being asked to.
    void expectNoCrash() const;

    std::string program_;       ///< the built one, unless another was named
    bool endsByItself_ = false; ///< a test has waited for the end
    base::KernelHandle process_;
    DWORD id_ = 0;
    HWND window_ = nullptr;
};

/// The path of `schedule.bak` or `schedule.damaged`.
std::string safetyCopy(const std::string& extension);

std::vector<scheduler::ScheduledProject> savedSchedule(const std::string& path = scheduler::schedulePath());
void saveEntries(const std::vector<scheduler::ScheduledProject>& entries);

/// The sample spider in a folder of its own, registered.
class SampleSpider {
public:
    SampleSpider();

    /// Writes a project file; returns its path.
    std::string makeProject(const std::string& fileName, const std::string& lines = "") const;
    /// The line of a project file whose runs last until release().
    std::string untilReleased() const { return "until=" + eventName_ + "\n"; }
    void release() const { SetEvent(event_.get()); }
    const std::string& folder() const { return folder_; }
    const std::string& program() const { return program_; }
    std::vector<std::string> log() const;
    /// The number of log lines that contain `text`.
    std::size_t logged(const std::string& text) const;

private:
    std::string folder_;
    std::string program_;
    std::string eventName_;
    base::KernelHandle event_;
};

} // namespace driver
