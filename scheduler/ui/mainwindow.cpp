#include "scheduler/ui/mainwindow.h"

#include "lib/base/opsys.h"
#include "lib/base/paths.h"
#include "lib/base/trayicon.h"
#include "resources/ids.h"
#include "scheduler/model/additions.h"
#include "scheduler/model/schedulecodec.h"
#include "scheduler/run/projectlaunch.h"
#include "scheduler/ui/autostart.h"
#include "scheduler/ui/commandswitches.h"
#include "scheduler/ui/dialogs.h"
#include "scheduler/ui/droppedfiles.h"
#include "scheduler/ui/framework/placement.h"
#include "scheduler/ui/menustate.h"
#include "scheduler/ui/programtexts.h"

namespace scheduler {

using base::TimeValue;
using framework::Handled;

namespace {

constexpr UINT_PTR engineTimer = 1;
constexpr UINT engineTimerMilliseconds = 1000;

HICON loadIcon(int sizeMetric) {
    const int size = GetSystemMetrics(sizeMetric);
    return static_cast<HICON>(
        LoadImageA(base::moduleHandle(), MAKEINTRESOURCEA(IDI_ACTIVE), IMAGE_ICON, size, size, LR_SHARED));
}

} // namespace

MainWindow::MainWindow()
    : class_("scheduler"),
      taskbarCreated_(RegisterWindowMessageA("TaskbarCreated")),
      engine_(schedule_, preferences_, {base::systemClock(), launcher_, outcomes_, file_, messages_, *this}),
      rows_(schedule_, [this] { return engine_.state(); }),
      list_(rows_),
      cellHints_(list_, rows_),
      commands_(schedule_, engine_, file_, base::systemClock()) {}

bool MainWindow::start(const std::string& commandLine, int showCommand) {
    if (!createWindow())
        return false;
    const bool hiddenStart = asksForHiddenStart(commandLine);
    engine_.setStartupFlag(hiddenStart);
    RegistryOutcomes::discardAll();
    loadState(showCommand);
    loadSchedule(schedule_, scheduleMagic);
    engine_.resetAll(TimeValue::now());
    icon_.add(handle());
    ShowWindow(handle(), hiddenStart ? SW_HIDE : showCommand);
    UpdateWindow(handle());
    if (preferences_.suspended)
        engine_.setSuspended(true);
    engine_.recomputeAll(TimeValue::now());
    list_.refresh();
    DragAcceptFiles(handle(), TRUE);
    engine_.setStartupFlag(false);
    SetTimer(handle(), engineTimer, engineTimerMilliseconds, nullptr);
    return true;
}

bool MainWindow::createWindow() {
    class_.description().hIcon = loadIcon(SM_CXICON);
    class_.description().hIconSm = loadIcon(SM_CXSMICON);
    framework::WindowParameters parameters;
    parameters.title = programTitle;
    parameters.style = WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN | WS_VISIBLE;
    parameters.menuOrId = LoadMenuA(base::moduleHandle(), MAKEINTRESOURCEA(IDR_MAIN_MENU));
    if (!create(class_, parameters) || !list_.createIn(handle()))
        return false;
    list_.addFilter(cellHints_);
    // A visible window gets the focus while it is being created, before there is a list to pass it on to.
    if (GetFocus() == handle())
        takeFocusToList();
    launcher_.reportTo(handle());
    messages_.setOwner(handle());
    return true;
}

void MainWindow::loadState(int& showCommand) {
    base::RegistryStore store = appRegistryKey(stateSection);
    loadPreferences(store, preferences_);
    framework::applyPlacement(handle(), preferences_.windowState, showCommand);
    placed_ = true;
    layOut();
    list_.restoreColumns(store);
}

Handled MainWindow::onMessage(const framework::Message& message) {
    switch (message.id) {
    case WM_WINDOWPOSCHANGING:
        // The window is created visible, but is not shown before it stands in its place and it is known that
        // the start is not a hidden one.
        if (!placed_)
            reinterpret_cast<WINDOWPOS*>(message.lParam)->flags &= ~static_cast<UINT>(SWP_SHOWWINDOW);
        return std::nullopt;
    case WM_SIZE:
        layOut();
        return 0;
    case WM_SETFOCUS:
        takeFocusToList();
        return 0;
    case WM_TIMER:
        onTimer();
        return 0;
    case WM_RUN_FINISHED:
        engine_.onRunFinished(static_cast<std::uint32_t>(message.wParam));
        return 0;
    case base::WM_TRAY_NOTIFY:
        onTrayNotify(static_cast<UINT>(message.lParam));
        return 0;
    case WM_COMMAND:
        return onCommand(LOWORD(message.wParam));
    case WM_NOTIFY:
        return onNotify(*reinterpret_cast<const NMHDR*>(message.lParam));
    case WM_INITMENUPOPUP:
        if (HIWORD(message.lParam)) // the window's own menu, whose items the platform knows
            return std::nullopt;
        updateMenu(reinterpret_cast<HMENU>(message.wParam),
                   menuContext(schedule_, list_.selectedEntries(), preferences_.suspended));
        return 0;
    case WM_CONTEXTMENU:
        onContextMenu(reinterpret_cast<HWND>(message.wParam));
        return 0;
    case WM_DROPFILES:
        onDropFiles(reinterpret_cast<HDROP>(message.wParam));
        return 0;
    case WM_HELP:
        onHelp();
        return 0;
    case WM_CLOSE:
        hideMainWindow();
        return 0;
    case WM_QUERYENDSESSION:
        return 1;
    case WM_ENDSESSION:
        if (message.wParam)
            exitProgram(ExitMode::AskFirst);
        return 0;
    default:
        if (message.id == taskbarCreated_)
            icon_.restore(preferences_.suspended);
        return std::nullopt;
    }
}

Handled MainWindow::onCommand(UINT command) {
    switch (command) {
    case IDM_PREFERENCES:
        changePreferences();
        return 0;
    case IDM_ADD:
        addEntryByEditor();
        return 0;
    case IDM_EDIT:
        editSelectedEntry();
        return 0;
    case IDM_DELETE:
        deleteSelectedEntries();
        return 0;
    case IDM_RUN:
        commands_.runNow(list_.selectedEntries());
        return 0;
    case IDM_ENABLE:
        toggleSelectedEntries();
        return 0;
    case IDM_OPEN:
        openSelectedProjects();
        return 0;
    case IDM_SUSPEND:
        engine_.setSuspended(!preferences_.suspended);
        return 0;
    case IDM_TEST:
        engine_.testTick();
        return 0;
    case IDM_ABOUT:
        showAbout(GetActiveWindow());
        return 0;
    case IDM_HELP:
        return SendMessageA(handle(), WM_HELP, 0, 0);
    case IDM_DISPLAY:
        showMainWindow();
        return 0;
    case IDM_CLOSE:
        hideMainWindow();
        return 0;
    case IDM_EXIT:
        exitProgram(ExitMode::AskFirst);
        return 0;
    default:
        return std::nullopt;
    }
}

Handled MainWindow::onNotify(const NMHDR& notification) {
    if (notification.idFrom != IDC_SCHEDULE_LIST)
        return std::nullopt;
    if (notification.code == NM_DBLCLK) {
        editSelectedEntry();
        return 0;
    }
    return list_.onNotify(notification);
}

void MainWindow::onTimer() {
    // A tick may change many entries; what it comes to is shown once, at its end.
    inTick_ = true;
    engine_.onTimer(TimeValue::now());
    inTick_ = false;
    // Also without a run, and while suspended, time turns texts into others: "Now", "tomorrow", "yesterday".
    if (IsWindowVisible(handle()))
        list_.refresh();
}

void MainWindow::onScheduleChanged() {
    if (!inTick_)
        list_.refresh();
}

void MainWindow::onSuspendedChanged(bool suspended) {
    const std::string title = titleFor(suspended);
    if (base::windowText(handle()) != title)
        SetWindowTextA(handle(), title.c_str());
    icon_.update(suspended);
    savePreferencesNow();
}

void MainWindow::addEntryByEditor() {
    const ScheduledProject blank = newEntryTemplate(schedule_, TimeValue::now());
    const auto edited = editEntry(GetActiveWindow(), blank, schedule_, std::nullopt);
    if (!edited)
        return;
    if (edited->files.size() < 2)
        addEntry(schedule_, edited->record, engine_.state(), file_);
    else
        addEntries(schedule_, edited->record, edited->files, engine_.state(), file_);
    list_.refresh();
}

void MainWindow::editSelectedEntry() {
    const std::optional<std::size_t> selected = list_.firstSelectedEntry();
    if (!selected) {
        addEntryByEditor();
        return;
    }
    const std::size_t position = *selected;
    const auto edited = editEntry(GetActiveWindow(), schedule_[position], schedule_, position);
    if (!edited)
        return;
    ScheduledProject& entry = schedule_[position];
    entry = edited->record;
    entry.nextRun = computeNextRun(engine_.state(), entry, TimeValue::now());
    list_.refresh();
    file_.save(schedule_);
}

void MainWindow::deleteSelectedEntries() {
    const Selection selection = list_.selectedEntries();
    if (selection.empty())
        return;
    commands_.remove(selection);
    rows_.onEntriesDeleted(selection);
    list_.onRowsDeleted();
}

void MainWindow::toggleSelectedEntries() {
    commands_.toggle(list_.selectedEntries());
    list_.refresh();
}

void MainWindow::openSelectedProjects() {
    for (const std::size_t position : list_.selectedEntries())
        if (position < schedule_.size()) // a message about an earlier one lets the schedule change
            openProject(schedule_[position].path, messages_);
}

void MainWindow::changePreferences() {
    if (editPreferences(GetActiveWindow(), preferences_))
        savePreferencesNow();
}

void MainWindow::onTrayNotify(UINT mouseMessage) {
    switch (mouseMessage) {
    case WM_LBUTTONDOWN:
        if (IsWindowVisible(handle()))
            SetForegroundWindow(handle());
        break;
    case WM_LBUTTONDBLCLK:
        showMainWindow();
        break;
    case WM_RBUTTONDOWN:
        // A menu closes when the user clicks elsewhere only if its window is in the foreground; one that is
        // hidden stays hidden there.
        SetForegroundWindow(handle());
        trackMenu(IDR_TRAY_MENU);
        PostMessageA(handle(), WM_NULL, 0, 0);
        break;
    default:
        break;
    }
}

void MainWindow::onContextMenu(HWND source) {
    if (source == list_.handle())
        trackMenu(IDR_ITEM_MENU);
}

void MainWindow::trackMenu(UINT menuResource) {
    const HMENU menu = LoadMenuA(base::moduleHandle(), MAKEINTRESOURCEA(menuResource));
    POINT cursor{};
    GetCursorPos(&cursor);
    TrackPopupMenu(GetSubMenu(menu, 0), TPM_RIGHTBUTTON, cursor.x, cursor.y, 0, handle(), nullptr);
    DestroyMenu(menu);
}

void MainWindow::onDropFiles(HDROP drop) {
    if (commands_.addDropped(droppedFiles(drop)))
        list_.refresh();
}

void MainWindow::onHelp() {
    const std::string file = base::directoryOf(base::executablePath()) + "scheduler.hlp";
    WinHelpA(handle(), file.c_str(), HELP_KEY, reinterpret_cast<ULONG_PTR>(programTitle.c_str()));
}

void MainWindow::takeFocusToList() {
    if (list_.handle())
        SetFocus(list_.handle());
}

void MainWindow::layOut() {
    RECT area{};
    GetClientRect(handle(), &area);
    list_.moveTo(area);
}

void MainWindow::showMainWindow() {
    ShowWindow(handle(), SW_RESTORE);
    UpdateWindow(handle());
    list_.refresh();
    SetForegroundWindow(handle());
}

void MainWindow::hideMainWindow() {
    // A window that was not shown has no new place, and has not taken on a saved maximised form.
    if (IsWindowVisible(handle()))
        preferences_.windowState = framework::capturePlacement(handle());
    ShowWindow(handle(), SW_HIDE);
    UpdateWindow(handle());
}

void MainWindow::exitProgram(ExitMode mode) {
    if (mode == ExitMode::AskFirst && !confirmExit())
        return;
    hideMainWindow();
    icon_.remove();
    saveWindowState();
    file_.save(schedule_);
    applyAutostart(preferences_.autostart);
    PostQuitMessage(0);
}

bool MainWindow::confirmExit() {
    // A second request while the question stands is the same question.
    if (askingToExit_)
        return false;
    if (!hasPendingRun(schedule_))
        return true;
    askingToExit_ = true;
    const bool confirmed = askYesNo(exitQuestion);
    askingToExit_ = false;
    return confirmed;
}

void MainWindow::savePreferencesNow() {
    base::RegistryStore store = appRegistryKey(stateSection);
    savePreferences(store, preferences_);
}

void MainWindow::saveWindowState() {
    base::RegistryStore store = appRegistryKey(stateSection);
    list_.saveColumns(store);
    savePreferences(store, preferences_);
}

} // namespace scheduler
