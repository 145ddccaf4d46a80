// Runs the real program as its user and its spider see it: own folder, real registry, real file, real window.
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

/// Polls until `condition` holds; false when a test's patience ends. Real time as this process's (perhaps
/// sped-up) clock has it.
bool waitUntil(const std::function<bool()>& condition,
               std::chrono::milliseconds limit = std::chrono::milliseconds(test::patience));

/// The folder that holds the built program; with a backslash at its end.
std::string buildFolder();

/// A fresh folder below the temporary one, with a backslash at its end.
std::string makeTestFolder();

void writeText(const std::string& path, const std::string& text);
std::string readBytes(const std::string& path);
std::vector<std::string> readLines(const std::string& path);

/// The text of a window or control of any process.
std::string textOf(HWND window);

/// What the thread of a window, of any process, does with keyboard and menus.
GUITHREADINFO inputStateOf(HWND window);

/// One copy of scheduler.exe. Killed on destruction if it is still there.
class SchedulerProcess {
public:
    SchedulerProcess();
    explicit SchedulerProcess(std::string program) : program_(std::move(program)) {}
    ~SchedulerProcess();
    SchedulerProcess(const SchedulerProcess&) = delete;
    SchedulerProcess& operator=(const SchedulerProcess&) = delete;

    /// Starts a copy with the given switches. A main copy is up when its timer runs: waits for its window.
    bool start(const std::string& switches = "");
    /// The two halves of start: without waiting, and waiting.
    void launch(const std::string& switches = "");
    bool waitForWindow();
    /// Starts a copy that is expected to end by itself; its exit code.
    static DWORD runToEnd(const std::string& switches);

    HWND window() const { return window_; }
    bool isRunning() const;
    bool waitForExit();
    DWORD exitCode() const;
    void kill(bool mayHaveEnded = false);

    /// Exits as the user does, who says Yes to the question if it is asked. False when it does not end.
    bool exit();

    /// Sends a menu command and, for one that may ask, does not wait for its end.
    void command(int id) const;

    /// A tick of the window's timer; returns when the window has handled it.
    void tick() const { SendMessageA(window_, WM_TIMER, 0, 0); }

    /// The program's message box, or dialog, that is open now; null when there is none.
    HWND messageBox() const;
    /// All dialogs and message boxes that the user sees, the uppermost first.
    std::vector<HWND> dialogs() const;
    bool isMenuOpen() const;
    /// What has the keyboard in the program; null while the program is not in the foreground.
    HWND focused() const { return inputStateOf(window_).hwndFocus; }
    /// The box's text.
    static std::string textOfBox(HWND box);
    /// Presses one of the box's buttons (IDYES, IDNO, IDOK).
    static void press(HWND box, int button);

private:
    /// Fails when the program has crashed, or has ended although no one waited for its end.
    void expectNoCrash() const;

    std::string program_;       ///< the built one, unless another was named
    bool endsByItself_ = false; ///< a test has waited for the end
    base::KernelHandle process_;
    DWORD id_ = 0;
    HWND window_ = nullptr;
};

/// The path of `schedule.bak` or `schedule.damaged`.
std::string safetyCopy(const std::string& extension);

/// The schedule saved there; empty when there is none that can be read.
std::vector<scheduler::ScheduledProject> savedSchedule(const std::string& path = scheduler::schedulePath());
void saveEntries(const std::vector<scheduler::ScheduledProject>& entries);

/// The sample spider, installed in this test's own folder with a log of its own.
class SampleSpider {
public:
    SampleSpider();

    /// Writes a project file with the given lines; its full path.
    std::string makeProject(const std::string& fileName, const std::string& lines = "") const;
    /// The line of a project file whose runs last until release().
    std::string untilReleased() const { return "until=" + eventName_ + "\n"; }
    void release() const { SetEvent(event_.get()); }
    const std::string& folder() const { return folder_; }
    const std::string& program() const { return program_; }
    std::vector<std::string> log() const;
    /// How many lines of the log hold `text`.
    std::size_t logged(const std::string& text) const;

private:
    std::string folder_;
    std::string program_;
    std::string eventName_;
    base::KernelHandle event_;
};

} // namespace driver
