#include "tests/program/scheduledriver.h"

#include "lib/base/files.h"
#include "lib/base/opsys.h"
#include "lib/base/paths.h"
#include "lib/base/processes.h"
#include "lib/base/stackalignment.h"
#include "resources/ids.h"
#include "scheduler/model/schedulecodec.h"
#include "scheduler/model/schedulefile.h"
#include "tests/support/timeout.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <fstream>
#include <span>
#include <sstream>

namespace driver {
namespace {

constexpr const char* dialogClass = "#32770";
constexpr DWORD killedCode = 1; ///< exit code after kill()

struct WindowSearch {
    DWORD process = 0;
    std::string className;
    std::vector<HWND> found;
};

CALLED_BY_PLATFORM BOOL CALLBACK checkWindow(HWND window, LPARAM parameter) {
    auto& search = *reinterpret_cast<WindowSearch*>(parameter);
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    char name[64]{};
    GetClassNameA(window, name, sizeof(name));
    if (process == search.process && name == search.className)
        search.found.push_back(window);
    return TRUE;
}

std::vector<HWND> findWindows(DWORD process, const std::string& className) {
    WindowSearch search{process, className, {}};
    EnumWindows(&checkWindow, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

HWND findWindow(DWORD process, const std::string& className) {
    const std::vector<HWND> found = findWindows(process, className);
    return found.empty() ? nullptr : found.front();
}

std::string builtProgram() {
    return buildFolder() + "scheduler.exe";
}

PROCESS_INFORMATION startCopy(const std::string& program, const std::string& switches) {
    STARTUPINFOA startupInfo{};
    startupInfo.cb = sizeof(startupInfo);
    PROCESS_INFORMATION information{};
    base::createProcess("\"" + program + "\" " + switches, startupInfo, information, "", false);
    CloseHandle(information.hThread);
    return information;
}

} // namespace

bool waitUntil(const std::function<bool()>& condition, std::chrono::milliseconds limit) {
    const auto end = std::chrono::steady_clock::now() + limit;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end)
            return condition();
        Sleep(20);
    }
    return true;
}

std::string buildFolder() {
    std::string folder = base::directoryOf(base::executablePath());
    for (int level = 0; level < 2; ++level) {
        folder.pop_back();
        folder = base::directoryOf(folder);
    }
    return folder;
}

std::string makeTestFolder() {
    static int count = 0;
    char temporary[MAX_PATH]{};
    GetTempPathA(sizeof(temporary), temporary);
    std::string folder = temporary + std::string("scheduler test ") + std::to_string(GetCurrentProcessId()) +
                         "-" + std::to_string(++count) + "\\";
    CreateDirectoryA(folder.c_str(), nullptr);
    return folder;
}

void writeText(const std::string& path, const std::string& text) {
    std::ofstream(path, std::ios::binary | std::ios::trunc) << text;
}

std::string readBytes(const std::string& path) {
    std::ostringstream content;
    content << std::ifstream(path, std::ios::binary).rdbuf();
    return content.str();
}

std::vector<std::string> readLines(const std::string& path) {
    std::vector<std::string> lines;
    std::ifstream file(path);
    for (std::string line; std::getline(file, line);)
        lines.push_back(line);
    return lines;
}

std::string textOf(HWND window) {
    // GetWindowText does not read controls of another process.
    std::array<char, 1024> buffer{};
    const LRESULT length =
        SendMessageA(window, WM_GETTEXT, buffer.size(), reinterpret_cast<LPARAM>(buffer.data()));
    return {buffer.data(), static_cast<std::size_t>(length)};
}

SchedulerProcess::SchedulerProcess() : SchedulerProcess(builtProgram()) {}

SchedulerProcess::~SchedulerProcess() {
    kill();
}

bool SchedulerProcess::start(const std::string& switches) {
    launch(switches);
    return waitForWindow();
}

void SchedulerProcess::launch(const std::string& switches) {
    expectNoCrash();
    const PROCESS_INFORMATION information = startCopy(program_, switches);
    process_.reset(information.hProcess);
    endIsExpected_ = false;
    id_ = information.dwProcessId;
    window_ = nullptr;
}

bool SchedulerProcess::waitForWindow() {
    // Accepting dropped files is the last step of start-up that is visible here. With tools/wine --speed, an
    // hour may pass in a minute.
    waitUntil(
        [this] {
            window_ = findWindow(id_, "scheduler");
            return !isRunning() || (GetWindowLongA(window_, GWL_EXSTYLE) & WS_EX_ACCEPTFILES) != 0;
        },
        std::chrono::hours(1));
    return isRunning() && window_ != nullptr;
}

DWORD SchedulerProcess::runToEnd(const std::string& switches) {
    const PROCESS_INFORMATION information = startCopy(builtProgram(), switches);
    base::KernelHandle process(information.hProcess);
    DWORD code = base::processFailed;
    if (WaitForSingleObject(process.get(), test::timeout) == WAIT_OBJECT_0)
        GetExitCodeProcess(process.get(), &code);
    return code;
}

bool SchedulerProcess::isRunning() const {
    return process_ && WaitForSingleObject(process_.get(), 0) == WAIT_TIMEOUT;
}

bool SchedulerProcess::waitForExit() {
    endIsExpected_ = true;
    return waitUntil([this] { return !isRunning(); });
}

DWORD SchedulerProcess::exitCode() const {
    DWORD code = base::processFailed;
    GetExitCodeProcess(process_.get(), &code);
    return code;
}

void SchedulerProcess::kill(bool mayHaveEnded) {
    endIsExpected_ |= mayHaveEnded;
    expectNoCrash();
    if (!isRunning())
        return;
    endIsExpected_ = true;
    TerminateProcess(process_.get(), killedCode);
    WaitForSingleObject(process_.get(), INFINITE);
}

void SchedulerProcess::expectNoCrash() const {
    if (!process_ || isRunning())
        return;
    // The platform's debugger may end a crashed program with 0, so 0 alone does not prove a normal exit.
    EXPECT_TRUE(endIsExpected_ && (exitCode() == 0 || exitCode() == killedCode))
        << "the program crashed or ended unexpectedly with exit code " << exitCode();
}

void SchedulerProcess::command(int id) const {
    PostMessageA(window_, WM_COMMAND, static_cast<WPARAM>(id), 0);
}

bool SchedulerProcess::exit() {
    command(IDM_EXIT);
    waitUntil([this] { return !isRunning() || messageBox() != nullptr; });
    if (isRunning())
        press(messageBox(), IDYES);
    return waitForExit() && exitCode() == 0;
}

HWND SchedulerProcess::messageBox() const {
    const HWND box = findWindow(id_, dialogClass);
    return box && IsWindowVisible(box) ? box : nullptr;
}

std::vector<HWND> SchedulerProcess::dialogs() const {
    std::vector<HWND> found = findWindows(id_, dialogClass);
    std::erase_if(found, [](HWND dialog) { return !IsWindowVisible(dialog); });
    return found;
}

GUITHREADINFO inputStateOf(HWND window) {
    GUITHREADINFO state{};
    state.cbSize = sizeof(state);
    GetGUIThreadInfo(GetWindowThreadProcessId(window, nullptr), &state);
    return state;
}

bool SchedulerProcess::isMenuOpen() const {
    return (inputStateOf(window_).flags & GUI_INMENUMODE) != 0;
}

std::string SchedulerProcess::textOfBox(HWND box) {
    for (HWND child = GetWindow(box, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        char name[32]{};
        GetClassNameA(child, name, sizeof(name));
        std::string text = textOf(child);
        if (std::string(name) == "Static" && !text.empty())
            return text;
    }
    return "";
}

void SchedulerProcess::press(HWND box, int button) {
    PostMessageA(box, WM_COMMAND, static_cast<WPARAM>(button), 0);
}

std::string safetyCopy(const std::string& extension) {
    return base::directoryOf(scheduler::schedulePath()) + "schedule." + extension;
}

std::vector<scheduler::ScheduledProject> savedSchedule(const std::string& path) {
    // Not loadSchedule(), because it would lock the file, and a save by the running scheduler would fail.
    const std::string content = readBytes(path);
    scheduler::ScheduleList list;
    scheduler::decodeSchedule(std::as_bytes(std::span(content)), scheduler::scheduleMagic, list);
    return std::vector(list.begin(), list.end());
}

void saveEntries(const std::vector<scheduler::ScheduledProject>& entries) {
    scheduler::ScheduleList list;
    list.assign(entries);
    scheduler::saveSchedule(list);
}

SampleSpider::SampleSpider()
    : folder_(makeTestFolder()), program_(folder_ + "spider.exe"), eventName_(folder_) {
    std::ranges::replace(eventName_, '\\', '/'); // a backslash would name a namespace
    event_.reset(CreateEventA(nullptr, TRUE, FALSE, eventName_.c_str()));
    CopyFileA((buildFolder() + "tests\\spider\\spider.exe").c_str(), program_.c_str(), FALSE);
    base::runProcessAndWait("\"" + program_ + "\" /register", SW_HIDE, "", INFINITE);
}

std::string SampleSpider::makeProject(const std::string& fileName, const std::string& lines) const {
    writeText(folder_ + fileName, lines);
    return folder_ + fileName;
}

std::vector<std::string> SampleSpider::log() const {
    return readLines(folder_ + "spider.log");
}

std::size_t SampleSpider::logged(const std::string& text) const {
    const std::vector<std::string> lines = log();
    return static_cast<std::size_t>(std::ranges::count_if(
        lines, [&](const std::string& line) { return line.find(text) != std::string::npos; }));
}

} // namespace driver
