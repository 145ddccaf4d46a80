#pragma once

#include "scheduler/model/preferences.h"
#include "scheduler/ui/framework/checkbox.h"
#include "scheduler/ui/framework/dialog.h"
#include "scheduler/ui/framework/numberedit.h"
#include "scheduler/ui/framework/radiogroup.h"

namespace scheduler {

class PreferencesDialog : public framework::Dialog {
public:
    /// Changes `preferences` on OK only. They must outlive the dialog.
    explicit PreferencesDialog(Preferences& preferences);

protected:
    void updateState() override;

private:
    framework::CheckBox autostart_;
    framework::RadioGroup runMultiple_;
    framework::NumberEdit waitTime_;
};

} // namespace scheduler
