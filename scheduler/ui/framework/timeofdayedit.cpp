#include "scheduler/ui/framework/timeofdayedit.h"

#include "scheduler/ui/framework/datetext.h"

namespace framework {
namespace {

constexpr WPARAM longestTyped = 8;

} // namespace

void TimeOfDayEdit::onAttached() {
    send(EM_LIMITTEXT, longestTyped);
}

base::TimeValue TimeOfDayEdit::value() const {
    return timeOfDayFromText(text(), clock_.now());
}

void TimeOfDayEdit::setValue(const base::TimeValue& value) {
    setText(timeOfDayText(value));
}

bool TimeOfDayEdit::onNotification(UINT code) {
    if (code != EN_KILLFOCUS)
        return false;
    setValue(value());
    return true;
}

} // namespace framework
