#include "scheduler/ui/preferencesdialog.h"

#include "resources/ids.h"

namespace scheduler {
namespace {

constexpr framework::NumberRange waitMinutes{0, 1440};

} // namespace

PreferencesDialog::PreferencesDialog(Preferences& preferences)
    : Dialog(IDD_PREFERENCES),
      autostart_(*this, IDC_AUTOSTART, framework::bindFlag(preferences.autostart)),
      // If no button is checked (-1), the flag is set: only the first button clears it.
      runMultiple_(*this, {IDC_WAIT_FOR_FIRST, IDC_RUN_BESIDE_FIRST},
                   framework::bindFlag(preferences.runMultiple)),
      waitTime_(*this, IDC_WAIT_TIME, waitMinutes, framework::bindNumber(preferences.waitTime)) {}

void PreferencesDialog::updateState() {
    waitTime_.setEnabled(runMultiple_.value() <= 0);
}

} // namespace scheduler
