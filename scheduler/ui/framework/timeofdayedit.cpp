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
    const std::string typed = text();
    const base::TimeValue read = timeOfDayFromText(typed, clock_.now());
    // On the day of a daylight saving change, reading a time's text can give a time that is an hour off. Keep
    // the value if its text is unchanged.
    const bool moved = !typed.empty() && typed == lastText_ && timeOfDayText(read) != typed;
    return moved ? lastValue_ : read;
}

void TimeOfDayEdit::setValue(const base::TimeValue& value) {
    lastText_ = timeOfDayText(value);
    lastValue_ = value;
    setText(lastText_);
}

bool TimeOfDayEdit::onNotification(UINT code) {
    if (code != EN_KILLFOCUS)
        return false;
    setValue(value());
    return true;
}

} // namespace framework
