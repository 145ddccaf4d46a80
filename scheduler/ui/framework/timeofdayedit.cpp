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
    // On a day on which the clock is changed, a time of day is read as another one, an hour beside it. What
    // was shown and not typed over stays what it was.
    const bool moved = !typed.empty() && typed == written_ && timeOfDayText(read) != typed;
    return moved ? writtenFrom_ : read;
}

void TimeOfDayEdit::setValue(const base::TimeValue& value) {
    written_ = timeOfDayText(value);
    writtenFrom_ = value;
    setText(written_);
}

bool TimeOfDayEdit::onNotification(UINT code) {
    if (code != EN_KILLFOCUS)
        return false;
    setValue(value());
    return true;
}

} // namespace framework
