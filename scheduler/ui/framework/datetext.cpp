#include "scheduler/ui/framework/datetext.h"

#include "lib/base/dateparsing.h"
#include "lib/base/formatting.h"
#include "lib/base/locale.h"

namespace framework {

std::string dateTimeText(base::TimeValue time) {
    constexpr int noon = 12;
    // The runtime's own name for the half of the day would follow its locale.
    return base::formatPattern(time, "%m/%d/%y %I:%M ") + (time.hour() < noon ? "am" : "pm");
}

base::TimeValue dateTimeFromText(const std::string& text) {
    return base::parseDateTime(text);
}

std::string timeOfDayText(base::TimeValue time) {
    // A time that has seconds shows them, so that showing and reading it back leaves it as it was.
    return base::formatLocaleTime(time, false, time.second() == 0);
}

base::TimeValue timeOfDayFromText(const std::string& text, base::TimeValue now) {
    const base::LocalTime today = now.local();
    const auto midnight = base::TimeValue::fromLocal(today.year, today.month, today.day, 0, 0, 0, -1);
    return midnight + base::parseTimeOfDay(text);
}

} // namespace framework
