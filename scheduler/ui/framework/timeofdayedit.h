// A field for a time of day, rewritten in its normal form when the focus leaves it.
#pragma once

#include "lib/base/dates.h"
#include "scheduler/ui/framework/boundcontrol.h"

#include <string>

namespace framework {

class TimeOfDayEdit : public BoundControl<base::TimeValue> {
public:
    /// The clock tells on which day a typed time lies; it has to outlive the edit.
    TimeOfDayEdit(ControlHost& host, int id, Binding binding, const base::Clock& clock)
        : BoundControl(std::move(binding), host, id), clock_(clock) {}

    /// The typed time of day, today.
    base::TimeValue value() const override;
    void setValue(const base::TimeValue& value) override;

    bool onNotification(UINT code) override;

protected:
    void onAttached() override;

private:
    const base::Clock& clock_;
    std::string written_; ///< the text that this object last gave the control
    base::TimeValue writtenFrom_;
};

} // namespace framework
