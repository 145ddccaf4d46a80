#include "scheduler/ui/mainwindow.h"

#include "lib/base/opsys.h"
#include "lib/base/scopedflag.h"
#include "lib/base/trayicon.h"
#include "resources/ids.h"
#include "scheduler/model/additions.h"
#include "scheduler/model/edits.h"
#include "scheduler/model/trackedentry.h"
#include "scheduler/model/trackedreferences.h"
#include "scheduler/run/projectlaunch.h"
#include "scheduler/ui/dialogs.h"
#include "scheduler/ui/droppedfiles.h"
#include "scheduler/ui/helpfile.h"
#include "scheduler/ui/menustate.h"
#include "scheduler/ui/popupmenus.h"
#include "scheduler/ui/programtexts.h"

#include <utility>

namespace scheduler {

using base::TimeValue;
using framework::Handled;

namespace {

// Goes on with a tick that has many projects to start, so that the window answers in between.
constexpr UINT_PTR pausedTickTimer = 2;
constexpr std::chrono::milliseconds longestTick(30);

constexpr WORD acceleratorCode = 1; // in place of a control's notification

} // namespace

Handled MainWindow::onMessage(const framework::Message& message) {
    switch (message.id) {
    case WM_WINDOWPOSCHANGING:
        // The window is created visible, but is neither shown nor takes the keyboard before it stands in its
        // place and it is known that the start is not a hidden one.
        if (!placed_) {
            UINT& flags = reinterpret_cast<WINDOWPOS*>(message.lParam)->flags;
            flags = (flags & ~UINT{SWP_SHOWWINDOW}) | SWP_NOACTIVATE;
        }
        return std::nullopt;
    case WM_SIZE:
        layOut();
        return 0;
    case WM_SETFOCUS:
        takeFocusToList();
        return 0;
    case WM_SYSCOLORCHANGE: // the platform tells it to top-level windows only
        SendMessageA(list_.handle(), message.id, message.wParam, message.lParam);
        return std::nullopt;
    case WM_TIMER:
        onTimer();
        return 0;
    case WM_RUN_FINISHED:
        static_cast<void>(engine_.onRunFinished(static_cast<std::uint32_t>(message.wParam)));
        return 0;
    case base::WM_TRAY_NOTIFY:
        onIconMouse(static_cast<UINT>(message.lParam), presence_);
        return 0;
    case WM_COMMAND:
        // A key that reaches a hidden window was meant for another one.
        if (HIWORD(message.wParam) == acceleratorCode && !IsWindowVisible(handle()))
            return 0;
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
        showHelp(handle());
        return 0;
    case WM_CLOSE:
        presence_.hide();
        return 0;
    case WM_QUERYENDSESSION:
        return 1;
    case WM_ENDSESSION:
        if (message.wParam)
            exit_.onSessionEnd();
        return 0;
    default:
        if (taskbarCreated_ != 0 && message.id == taskbarCreated_)
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

Handled MainWindow::onNotify(const NMHDR& notification) {
    if (notification.idFrom != IDC_SCHEDULE_LIST)
        return std::nullopt;
    if (notification.code == NM_DBLCLK)
        return SendMessageA(handle(), WM_COMMAND, IDM_EDIT, 0);
    return list_.onNotify(notification);
}

void MainWindow::onTimer() {
    if (std::exchange(tickPaused_, false))
        KillTimer(handle(), pausedTickTimer);
    tickBegan_ = std::chrono::steady_clock::now();
    // A tick may change many entries; what it comes to is shown once, at its end.
    {
        const base::ScopedFlag ticking(inTick_);
        changedInTick_ = false;
        engine_.onTimer(TimeValue::now());
    }
    if (!IsWindowVisible(handle()))
        return;
    if (changedInTick_)
        list_.refresh();
    else // also while suspended, time turns texts into others: "Now", "tomorrow", "yesterday"
        list_.onTimePassed();
}

void MainWindow::onScheduleChanged() {
    changedInTick_ = true;
    if (!inTick_)
        list_.refresh();
}

bool MainWindow::wantsTickToPause() {
    if (std::chrono::steady_clock::now() - tickBegan_ < longestTick)
        return false;
    // A timer's message comes when no other is waiting: the user's come first.
    tickPaused_ = SetTimer(handle(), pausedTickTimer, USER_TIMER_MINIMUM, nullptr) != 0;
    return true;
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
    const TrackedReferences references(schedule_);
    auto edited = editEntry(activeWindowOr(handle()), blank, schedule_, std::nullopt);
    if (!edited)
        return;
    references.bringUpToDate(edited->record, schedule_.size());
    if (edited->files.size() < 2)
        static_cast<void>(addEntry(schedule_, edited->record, engine_.state(), file_));
    else
        static_cast<void>(addEntries(schedule_, edited->record, edited->files, engine_.state(), file_));
    list_.refresh();
}

void MainWindow::editSelectedEntry() {
    const std::optional<std::size_t> selected = list_.firstSelectedEntry();
    if (!selected) {
        addEntryByEditor();
        return;
    }
    // Other programs can send commands all the while, which put the entry and the one that it follows
    // elsewhere or delete them.
    const TrackedEntry tracked(schedule_, *selected);
    const TrackedReferences references(schedule_);
    auto edited = editEntry(activeWindowOr(handle()), schedule_[*selected], schedule_, *selected);
    if (!edited || !tracked.position())
        return;
    references.bringUpToDate(edited->record, *tracked.position());
    // The engine went on meanwhile: what it recorded in the entry stays.
    ScheduledProject& entry = schedule_[*tracked.position()];
    applyEdit(entry, std::move(edited->record));
    entry.nextRun = computeNextRun(engine_.state(), entry, TimeValue::now());
    list_.refresh();
    static_cast<void>(file_.save(schedule_));
}

void MainWindow::deleteSelectedEntries() {
    const Selection selection = list_.selectedEntries();
    if (selection.empty())
        return;
    commands_.remove(selection);
    list_.onRowsDeleted();
}

void MainWindow::toggleSelectedEntries() {
    commands_.toggle(list_.selectedEntries());
    list_.refresh();
}

void MainWindow::openSelectedProjects() {
    for (const std::size_t position : list_.selectedEntries())
        if (position < schedule_.size()) // a message about an earlier one lets the schedule change
            static_cast<void>(openProject(schedule_[position].path, messages_));
}

void MainWindow::changePreferences() {
    if (editPreferences(activeWindowOr(handle()), preferences_))
        savePreferencesNow();
}

void MainWindow::onContextMenu(HWND source) {
    if (source == list_.handle())
        trackMenu(handle(), IDR_ITEM_MENU);
}

void MainWindow::onDropFiles(HDROP drop) {
    if (commands_.addDropped(droppedFiles(drop)))
        list_.refresh();
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

void MainWindow::savePreferencesNow() {
    base::RegistryStore store = appRegistryKey(stateSection);
    static_cast<void>(savePreferences(store, preferences_));
}

} // namespace scheduler
