#pragma once

#include "scheduler/ui/framework/datetext.h"
#include "scheduler/ui/framework/edit.h"

namespace framework {

class DateTimeEdit : public Edit {
public:
    /// `binding` comes from bindDateTime.
    DateTimeEdit(ControlHost& host, int id, Binding binding = nullptr) : Edit(host, id, std::move(binding)) {}

    /// 0 if the text is no date.
    base::TimeValue time() const { return dateTimeFromText(text()); }
    void setTime(base::TimeValue time) { setText(dateTimeText(time)); }
};

} // namespace framework
