#include "scheduler/ui/mainwindow.h"

#include "lib/base/base.h"
#include "lib/base/opsys.h"
#include "lib/base/trayicon.h"
#include "resources/ids.h"
#include "scheduler/run/projectlaunch.h"
#include "scheduler/ui/commandswitches.h"
#include "scheduler/ui/dialogs.h"
#include "scheduler/ui/droppedfiles.h"
#include "scheduler/ui/framework/placement.h"
#include "scheduler/ui/helpfile.h"
#include "scheduler/ui/menustate.h"
#include "scheduler/ui/popupmenus.h"
#include "scheduler/ui/programtexts.h"

#include <utility>

namespace scheduler {

using framework::Handled;

namespace {

constexpr UINT_PTR engineTimer = 1;
constexpr UINT engineTimerMilliseconds = 1000;
constexpr UINT_PTR unfinishedTickTimer = 2;

constexpr WORD acceleratorCode = 1; // high word of WM_COMMAND's wParam

HICON loadIcon(int sizeMetric) {
    const int size = GetSystemMetrics(sizeMetric);
    return static_cast<HICON>(
        LoadImageA(base::moduleHandle(), MAKEINTRESOURCEA(IDI_ACTIVE), IMAGE_ICON, size, size, LR_SHARED));
}

/// Such commands are ignored while a dialog is open, because the dialog relies on schedule positions. Other
/// programs can send them at any time.
bool changesSchedule(UINT command) {
    switch (command) {
    case IDM_ADD:
    case IDM_EDIT:
    case IDM_DELETE:
    case IDM_RUN:
    case IDM_ENABLE:
        return true;
    default:
        return false;
    }
}

} // namespace

MainWindow::MainWindow()
    : class_("scheduler"),
      taskbarCreated_(RegisterWindowMessageA("TaskbarCreated")),
      engine_(schedule_, preferences_, {clock_, launcher_, outcomes_, file_, messages_, *this, history_}),
      rows_(
          schedule_, [this] { return engine_.state(); }, clock_),
      list_(schedule_, rows_),
      commands_(schedule_, engine_, file_, clock_,
                [this](const std::string& path) { static_cast<void>(openProject(path, messages_)); }),
      presence_(*this, preferences_),
      exit_({schedule_, file_, preferences_, list_, icon_, presence_, history_}) {}

// Order matters: place the window before showing it; set the start-up flag before computing next runs.
bool MainWindow::start(const std::string& commandLine, int showCommand) {
    if (!createWindow())
        return false;
    const bool hiddenStart = asksForHiddenStart(commandLine);
    engine_.setStartupFlag(hiddenStart);
    RegistryOutcomes::discardAll();
    base::RegistryStore store = appRegistryKey(stateSection);
    applySavedState(store, showCommand);
    history_.record(ProgramEvent::Started, base::executablePath());
    file_.load(schedule_);
    engine_.resetAll(clock_.now());
    list_.restoreColumns(store);
    icon_.add(handle());
    ShowWindow(handle(), hiddenStart ? SW_HIDE : showCommand);
    UpdateWindow(handle());
    if (preferences_.suspended)
        engine_.setSuspended(true);
    engine_.recomputeAll(clock_.now());
    DragAcceptFiles(handle(), TRUE);
    engine_.setStartupFlag(false);
    if (SetTimer(handle(), engineTimer, engineTimerMilliseconds, nullptr))
        return true;
    icon_.remove();
    return false;
}

bool MainWindow::createWindow() {
    class_.description().hIcon = loadIcon(SM_CXICON);
    class_.description().hIconSm = loadIcon(SM_CXSMICON);
    framework::WindowParameters parameters;
    parameters.title = base::applicationName;
    parameters.style = WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN | WS_VISIBLE;
    parameters.menuOrId = LoadMenuA(base::moduleHandle(), MAKEINTRESOURCEA(IDR_MAIN_MENU));
    if (!parameters.menuOrId || !create(class_, parameters) || !list_.createIn(handle()))
        return false;
    launcher_.reportTo(handle());
    messages_.setOwner(handle());
    return true;
}

void MainWindow::applySavedState(base::RegistryStore& store, int& showCommand) {
    static_cast<void>(loadPreferences(store, preferences_)); // unreadable values keep their defaults
    static_cast<void>(framework::applyPlacement(handle(), preferences_.windowState, showCommand));
    placed_ = true;
    layOut();
}

Handled MainWindow::onMessage(const framework::Message& message) {
    switch (message.id) {
    case WM_WINDOWPOSCHANGING:
        // The window is created with WS_VISIBLE, but must not appear or get the focus before start() has
        // placed it.
        if (!placed_) {
            UINT& flags = reinterpret_cast<WINDOWPOS*>(message.lParam)->flags;
            flags = (flags & ~UINT{SWP_SHOWWINDOW}) | SWP_NOACTIVATE;
        }
        return std::nullopt;
    case WM_SIZE:
        layOut();
        return 0;
    case WM_SETFOCUS:
        if (list_.handle())
            SetFocus(list_.handle());
        return 0;
    case WM_SYSCOLORCHANGE: // sent to top-level windows only
        SendMessageA(list_.handle(), message.id, message.wParam, message.lParam);
        return std::nullopt;
    case WM_TIMER:
        onTimer();
        return 0;
    case WM_RUN_FINISHED:
        static_cast<void>(engine_.onRunFinished(static_cast<std::uint32_t>(message.wParam)));
        return 0;
    case WM_RUN_NOT_STARTED:
        history_.onProcessNotStarted(static_cast<std::uint32_t>(message.wParam),
                                     base::systemErrorText(static_cast<std::uint32_t>(message.lParam)));
        return 0;
    case base::WM_TRAY_NOTIFY:
        NotificationIcon::onMouse(static_cast<UINT>(message.lParam), presence_);
        return 0;
    case WM_COMMAND:
        // A key that reaches a hidden window was intended for another window.
        if (HIWORD(message.wParam) == acceleratorCode && !IsWindowVisible(handle()))
            return 0;
        return onCommand(LOWORD(message.wParam));
    case WM_INITMENUPOPUP:
        if (HIWORD(message.lParam)) // the system menu, which the platform updates
            return std::nullopt;
        updateMenu(reinterpret_cast<HMENU>(message.wParam),
                   menuContext(schedule_, list_.selectedEntries(), preferences_.suspended));
        return 0;
    case WM_CONTEXTMENU:
        if (reinterpret_cast<HWND>(message.wParam) != list_.handle())
            return std::nullopt;
        trackMenu(handle(), IDR_ITEM_MENU);
        return 0;
    case WM_DROPFILES:
        onDropFiles(reinterpret_cast<HDROP>(message.wParam));
        return 0;
    case WM_HELP:
        showHelp(handle());
        return 0;
    case WM_CLOSE:
        presence_.hide();
        return 0;
    case WM_QUERYENDSESSION:
        return 1;
    case WM_ENDSESSION:
        if (message.wParam && !exit_.continueExit())
            exit_.onSessionEnd();
        return 0;
    default:
        if (taskbarCreated_ != 0 && message.id == taskbarCreated_)
            icon_.restore(preferences_.suspended);
        return std::nullopt;
    }
}

Handled MainWindow::onCommand(UINT command) {
    if (exit_.continueExit())
        return 0;
    if (changesSchedule(command) && !IsWindowEnabled(handle()))
        return 0;
    switch (command) {
    case IDM_PREFERENCES:
        changePreferences();
        return 0;
    case IDM_ADD:
        addByEditor();
        return 0;
    case IDM_EDIT:
        editSelected();
        return 0;
    case IDM_DELETE:
        commands_.remove(list_.selectedEntries());
        return 0;
    case IDM_RUN:
        commands_.runNow(list_.selectedEntries());
        return 0;
    case IDM_ENABLE:
        commands_.toggle(list_.selectedEntries());
        return 0;
    case IDM_OPEN:
        commands_.open(list_.selectedEntries());
        return 0;
    case IDM_SUSPEND:
        engine_.setSuspended(!preferences_.suspended);
        return 0;
    case IDM_TEST:
        engine_.testTick();
        return 0;
    case IDM_ABOUT:
        showAbout(activeWindowOr(handle()));
        return 0;
    case IDM_HELP:
        return SendMessageA(handle(), WM_HELP, 0, 0);
    case IDM_DISPLAY:
        presence_.show();
        return 0;
    case IDM_CLOSE:
        presence_.hide();
        return 0;
    case IDM_EXIT:
        exit_.exitProgram(ExitMode::AskFirst);
        return 0;
    default:
        return std::nullopt;
    }
}

void MainWindow::onTimer() {
    if (exit_.continueExit())
        return;
    const TickResult tick = engine_.onTimer(clock_.now());
    // Timer messages have the lowest priority, so pending input is handled before the tick continues.
    if (tick.unfinished)
        SetTimer(handle(), unfinishedTickTimer, USER_TIMER_MINIMUM, nullptr);
    else
        KillTimer(handle(), unfinishedTickTimer);
    if (!tick.changed)
        list_.onTimePassed(clock_.now());
}

void MainWindow::onDropFiles(HDROP drop) {
    if (IsWindowEnabled(handle()))
        commands_.addDropped(droppedFiles(drop));
}

void MainWindow::onSuspendedChanged(bool suspended) {
    const std::string title = titleFor(suspended);
    if (base::windowText(handle()) != title)
        SetWindowTextA(handle(), title.c_str());
    icon_.update(suspended);
    storePreferences(preferences_);
    history_.record(suspended ? ProgramEvent::Suspended : ProgramEvent::Resumed);
}

void MainWindow::onLoadFailed(const std::string& path) {
    history_.record(ProgramEvent::NotRead, path);
}

void MainWindow::onSaveFailed(const std::string& path, const std::string& reason) {
    icon_.warn(saveFailedText(path, reason));
    history_.record(ProgramEvent::NotSaved, path, reason);
}

void MainWindow::addByEditor() {
    const auto edited =
        editEntry(activeWindowOr(handle()), commands_.newEntry(), schedule_, std::nullopt, clock_);
    if (edited)
        commands_.add(edited->record, edited->files);
}

void MainWindow::editSelected() {
    const std::optional<std::size_t> selected = list_.firstSelectedEntry();
    if (!selected)
        return addByEditor();
    auto edited = editEntry(activeWindowOr(handle()), schedule_[*selected], schedule_, *selected, clock_);
    if (edited)
        commands_.edit(*selected, std::move(edited->record));
}

void MainWindow::changePreferences() {
    if (editPreferences(activeWindowOr(handle()), preferences_))
        storePreferences(preferences_);
}

void MainWindow::layOut() {
    RECT area{};
    GetClientRect(handle(), &area);
    list_.moveTo(area);
}

} // namespace scheduler
