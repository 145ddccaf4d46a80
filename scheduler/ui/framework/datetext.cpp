#include "scheduler/ui/framework/datetext.h"

#include "lib/base/dateparsing.h"
#include "lib/base/formatting.h"
#include "lib/base/locale.h"

namespace framework {

std::string dateTimeText(base::TimeValue time) {
    constexpr int noon = 12;
    // Not %p, which depends on the runtime's locale.
    return base::formatPattern(time, "%m/%d/%y %I:%M ") + (time.hour() < noon ? "am" : "pm");
}

base::TimeValue dateTimeFromText(const std::string& text) {
    return base::parseDateTime(text);
}

std::string timeOfDayText(base::TimeValue time) {
    // Show seconds if there are any, so that reading the text back gives the same time.
    return base::formatLocaleTime(time, false, time.second() == 0);
}

base::TimeValue timeOfDayFromText(const std::string& text, base::TimeValue now) {
    const base::LocalTime today = now.local();
    const auto midnight = base::TimeValue::fromLocal(today.year, today.month, today.day, 0, 0, 0, -1);
    return midnight + base::parseTimeOfDay(text);
}

} // namespace framework
