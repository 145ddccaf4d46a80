// A field for a date and a time of day.
#pragma once

#include "scheduler/ui/framework/datetext.h"
#include "scheduler/ui/framework/edit.h"

namespace framework {

class DateTimeEdit : public Edit {
public:
    /// The binding is one of bindDateTime.
    DateTimeEdit(ControlHost& host, int id, Binding binding = nullptr) : Edit(host, id, std::move(binding)) {}

    /// 0 when the text is no date.
    base::TimeValue time() const { return dateTimeFromText(text()); }
    void setTime(base::TimeValue time) { setText(dateTimeText(time)); }
};

} // namespace framework
