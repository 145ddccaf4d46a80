// A field for a time of day, rewritten in its normal form when it loses the focus.
#pragma once

#include "lib/base/dates.h"
#include "scheduler/ui/framework/boundcontrol.h"

#include <string>

namespace framework {

class TimeOfDayEdit : public BoundControl<base::TimeValue> {
public:
    /// A typed time is on the current day of `clock`, which must outlive the edit.
    TimeOfDayEdit(ControlHost& host, int id, Binding binding, const base::Clock& clock)
        : BoundControl(std::move(binding), host, id), clock_(clock) {}

    base::TimeValue value() const override;
    void setValue(const base::TimeValue& value) override;

    bool onNotification(UINT code) override;

protected:
    void onAttached() override;

private:
    const base::Clock& clock_;
    std::string lastText_; ///< the text of lastValue_
    base::TimeValue lastValue_;
};

} // namespace framework
