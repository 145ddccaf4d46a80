// The main window: owns the schedule and the engine; handles the timer, the ends of runs and commands.
#pragma once

#include "scheduler/model/preferences.h"
#include "scheduler/model/schedulefile.h"
#include "scheduler/model/schedulelist.h"
#include "scheduler/run/engine.h"
#include "scheduler/run/historyfile.h"
#include "scheduler/run/outcomes.h"
#include "scheduler/run/runhistory.h"
#include "scheduler/run/worker.h"
#include "scheduler/ui/framework/window.h"
#include "scheduler/ui/framework/windowclass.h"
#include "scheduler/ui/messageboxes.h"
#include "scheduler/ui/notificationicon.h"
#include "scheduler/ui/programexit.h"
#include "scheduler/ui/schedulecommands.h"
#include "scheduler/ui/schedulelistview.h"
#include "scheduler/ui/schedulerows.h"
#include "scheduler/ui/windowpresence.h"

#include <windows.h>

#include <shellapi.h>

#include <string>

namespace scheduler {

class MainWindow : public framework::Window, private EngineListener, private ScheduleFileListener {
public:
    MainWindow();

    /// Loads the saved state and starts the engine. False if the window or the timer cannot be created.
    [[nodiscard]] bool start(const std::string& commandLine, int showCommand);

private:
    framework::Handled onMessage(const framework::Message& message) override;
    framework::Handled onCommand(UINT command);
    void onTimer();
    void onDropFiles(HDROP drop);
    void onSuspendedChanged(bool suspended) override;
    void onLoadFailed(const std::string& path) override;
    void onSaveFailed(const std::string& path, const std::string& reason) override;

    void addByEditor();
    void editSelected();
    void changePreferences();

    [[nodiscard]] bool createWindow();
    void applySavedState(base::RegistryStore& store, int& showCommand);
    void layOut();

    framework::WindowClass class_;
    UINT taskbarCreated_; ///< broadcast when the shell has recreated its taskbar; 0: not registered
    const base::Clock& clock_ = base::systemClock();
    ScheduleList schedule_;
    Preferences preferences_;
    ScheduleFile file_{*this};
    WorkerLauncher launcher_;
    RegistryOutcomes outcomes_;
    MessageBoxes messages_;
    HistoryFile historyFile_;
    RunHistory history_{schedule_, clock_, historyFile_};
    SchedulerEngine engine_;
    ScheduleRows rows_;
    ScheduleListView list_;
    ScheduleCommands commands_;
    WindowPresence presence_;
    ProgramExit exit_;
    bool placed_ = false;
    // Declared last, so destroyed first: removing the icon dispatches messages that use other members.
    NotificationIcon icon_;
};

} // namespace scheduler
