#pragma once

#include "scheduler/ui/framework/datetext.h"
#include "scheduler/ui/framework/edit.h"

namespace framework {

class DateTimeEdit : public Edit {
public:
    /// `binding` must come from bindDateTime.
    DateTimeEdit(ControlHost& host, int id, Binding binding = nullptr) : Edit(host, id, std::move(binding)) {}

    base::TimeValue time() const { return dateTimeFromText(text()); }
    void setTime(base::TimeValue time) { setText(dateTimeText(time)); }
};

} // namespace framework
