// The editor's page for when an entry runs.
#pragma once

#include "scheduler/model/schedulelist.h"
#include "scheduler/ui/framework/checkbox.h"
#include "scheduler/ui/framework/datetimeedit.h"
#include "scheduler/ui/framework/listbox.h"
#include "scheduler/ui/framework/numberedit.h"
#include "scheduler/ui/framework/propertypage.h"
#include "scheduler/ui/framework/radiogroup.h"
#include "scheduler/ui/framework/timeofdayedit.h"

#include <array>
#include <cstddef>
#include <memory>
#include <optional>

namespace scheduler {

class SchedulePage : public framework::PropertyPage {
public:
    /// Edits `record` in place. It and the clock must outlive the page. No `position` means a new entry.
    SchedulePage(ScheduledProject& record, const ScheduleList& schedule, std::optional<std::size_t> position,
                 const base::Clock& clock);

    void load() override;
    bool check() override;
    void onIdle() override;

protected:
    void updateState() override;

private:
    /// Wraps a binding so that it stores only while `kind` is selected.
    template<class Value>
    [[nodiscard]] std::unique_ptr<framework::FieldBinding<Value>>
    ofKind(ScheduleKind kind, std::unique_ptr<framework::FieldBinding<Value>> binding);

    bool isChosen(ScheduleKind kind) const;
    bool hasWeekday() const;

    /// Sets a past "just once" time to one minute from now, unless that kind was selected already: the user
    /// may be editing the time.
    void offerFutureTime();

    const base::Clock& clock_;
    framework::ItemList otherProjects_; ///< values: positions in the schedule

    framework::RadioGroup kind_;
    bool wasOnce_ = false; ///< "just once" was selected at load or at the last idle pass
    framework::ListBox afterProject_;
    framework::NumberEdit afterDelay_;
    framework::NumberEdit startupDelay_;
    framework::NumberEdit hourlyMinute_;
    framework::TimeOfDayEdit dailyTime_;
    std::array<framework::CheckBox, 7> weekdays_; ///< Monday first
    framework::NumberEdit monthlyDay_;
    framework::TimeOfDayEdit monthlyTime_;
    framework::DateTimeEdit onceTime_;
};

} // namespace scheduler
