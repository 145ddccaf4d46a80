// The editor's page for the project and its run settings.
#pragma once

#include "scheduler/model/scheduledproject.h"
#include "scheduler/ui/framework/browseedit.h"
#include "scheduler/ui/framework/checkbox.h"
#include "scheduler/ui/framework/listbox.h"
#include "scheduler/ui/framework/numberedit.h"
#include "scheduler/ui/framework/propertypage.h"

#include <string>
#include <vector>

namespace scheduler {

class ProjectPage : public framework::PropertyPage {
public:
    /// Edits `record` in place; it must outlive the page. `phoneBookEntries` are the connections offered.
    ProjectPage(ScheduledProject& record, const std::vector<std::string>& phoneBookEntries);

    /// Whether the Browse dialog accepts several files. Initially true.
    void setMultiSelect(bool several);

    /// Several files from the Browse dialog, in the form for addEntries(); empty if the path names only one.
    std::vector<std::string> chosenFiles() const;

    void load() override;
    void store() override;

protected:
    void updateState() override;

private:
    ScheduledProject& record_;
    framework::ItemList runCommands_;
    framework::ItemList connections_;

    framework::BrowseEdit path_;
    framework::ListBox runCommand_;
    framework::TextListBox autoconnect_;
    framework::NumberEdit timeLimit_;
    framework::CheckBox disconnect_;
};

} // namespace scheduler
