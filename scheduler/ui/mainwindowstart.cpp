// How the main window comes up. The order counts: nothing is shown before it is known where and whether, and
// the first next runs are computed while the start-up flag stands.
#include "lib/base/base.h"
#include "lib/base/opsys.h"
#include "resources/ids.h"
#include "scheduler/model/schedulecodec.h"
#include "scheduler/ui/commandswitches.h"
#include "scheduler/ui/framework/placement.h"
#include "scheduler/ui/mainwindow.h"

namespace scheduler {

using base::TimeValue;

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
      commands_(schedule_, engine_, file_, base::systemClock()),
      presence_(*this, list_, preferences_),
      exit_({schedule_, file_, preferences_, list_, icon_, presence_}) {}

bool MainWindow::start(const std::string& commandLine, int showCommand) {
    if (!createWindow())
        return false;
    const bool hiddenStart = asksForHiddenStart(commandLine);
    engine_.setStartupFlag(hiddenStart);
    RegistryOutcomes::discardAll();
    loadState(showCommand);
    static_cast<void>(loadSchedule(schedule_, scheduleMagic));
    engine_.resetAll(TimeValue::now());
    list_.refresh(); // shown with its rows: otherwise it would be painted empty and then once more
    icon_.add(handle());
    ShowWindow(handle(), hiddenStart ? SW_HIDE : showCommand);
    UpdateWindow(handle());
    if (preferences_.suspended)
        engine_.setSuspended(true);
    engine_.recomputeAll(TimeValue::now());
    list_.refresh();
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

void MainWindow::loadState(int& showCommand) {
    base::RegistryStore store = appRegistryKey(stateSection);
    static_cast<void>(loadPreferences(store, preferences_));
    static_cast<void>(framework::applyPlacement(handle(), preferences_.windowState, showCommand));
    placed_ = true;
    layOut();
    list_.restoreColumns(store);
}

} // namespace scheduler
