// Drives the real program, which uses the real registry and schedule file.
#pragma once

#include "lib/base/handles.h"
#include "scheduler/model/schedulefile.h"
#include "scheduler/model/schedulelist.h"
#include "tests/support/timeout.h"

#include <windows.h>

#include <chrono>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace driver {

/// Polls until `condition` holds; false after `limit`.
bool waitUntil(const std::function<bool()>& condition,
               std::chrono::milliseconds limit = std::chrono::milliseconds(test::timeout));

/// The folder of the built program, with a trailing backslash.
std::string buildFolder();

/// Creates a temporary folder; its path has a trailing backslash.
std::string makeTestFolder();

void writeText(const std::string& path, const std::string& text);
std::string readBytes(const std::string& path);
std::vector<std::string> readLines(const std::string& path);

std::string textOf(HWND window);

GUITHREADINFO inputStateOf(HWND window);

/// An instance of scheduler.exe, killed on destruction.
class SchedulerProcess {
public:
    SchedulerProcess();
    explicit SchedulerProcess(std::string program) : program_(std::move(program)) {}
    ~SchedulerProcess();
    SchedulerProcess(const SchedulerProcess&) = delete;
    SchedulerProcess& operator=(const SchedulerProcess&) = delete;

    /// Waits until the window is ready; false if the program ends first.
    bool start(const std::string& switches = "");
    void launch(const std::string& switches = "");
    bool waitForWindow();
    /// Starts an instance that ends by itself. Returns its exit code; base::processFailed if it does not end.
    static DWORD runToEnd(const std::string& switches);

    HWND window() const { return window_; }
    bool isRunning() const;
    bool waitForExit();
    DWORD exitCode() const;
    void kill(bool mayHaveEnded = false);

    /// Exits and answers Yes if asked; false unless the program ends with exit code 0.
    bool exit();

    void command(int id) const;

    /// Sends a timer message and waits until it is handled.
    void tick() const { SendMessageA(window_, WM_TIMER, 0, 0); }

    /// The open message box or dialog, or null.
    HWND messageBox() const;
    /// The visible dialogs and message boxes, topmost first.
    std::vector<HWND> dialogs() const;
    bool isMenuOpen() const;
    /// Null if no window of the program has the focus.
    HWND focused() const { return inputStateOf(window_).hwndFocus; }
    static std::string textOfBox(HWND box);
    static void press(HWND box, int button);

private:
    /// Fails the test if the program crashed or ended unexpectedly.
    void expectNoCrash() const;

    std::string program_;
    bool endIsExpected_ = false;
    base::KernelHandle process_;
    DWORD id_ = 0;
    HWND window_ = nullptr;
};

/// The path of `schedule.bak` or `schedule.damaged`.
std::string safetyCopy(const std::string& extension);

std::vector<scheduler::ScheduledProject> savedSchedule(const std::string& path = scheduler::schedulePath());
void saveEntries(const std::vector<scheduler::ScheduledProject>& entries);

/// A registered copy of the sample spider in its own folder.
class SampleSpider {
public:
    SampleSpider();

    /// Writes a project file; returns its path.
    std::string makeProject(const std::string& fileName, const std::string& lines = "") const;
    /// A line of a project file that makes its runs last until release().
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
