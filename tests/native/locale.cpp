// The locale functions of the native build, with English formats.

#include "lib/base/locale.h"

#include "lib/base/formatting.h"

#include <cctype>
#include <string>

namespace base {
namespace {

std::string twoDigits(int number) {
    return std::string(number < 10 ? 1 : 0, '0') + std::to_string(number);
}

} // namespace

char lowerCase(char character) {
    return static_cast<char>(std::tolower(static_cast<unsigned char>(character)));
}

std::string formatLocaleDate(TimeValue t, bool longForm) {
    // As on Windows, negative times have no date. formatLocaleTime() shows them as midnight.
    if (t.seconds() <= 0)
        return {};
    const LocalTime local = t.local();
    const std::string day = std::to_string(local.day);
    if (longForm)
        return formatPattern(t, "%A, %B ") + day + formatPattern(t, ", %Y");
    return std::to_string(local.month) + '/' + day + '/' + std::to_string(local.year);
}

std::string formatLocaleTime(TimeValue t, bool force24Hour, bool noSeconds) {
    if (t == TimeValue())
        return {};
    const LocalTime local = t.local();
    const int hour = force24Hour ? local.hour : local.hour % 12 == 0 ? 12 : local.hour % 12;
    std::string text = std::to_string(hour) + ':' + twoDigits(local.minute);
    if (!noSeconds)
        text += ':' + twoDigits(local.second);
    if (!force24Hour)
        text += local.hour < 12 ? " AM" : " PM";
    return text;
}

} // namespace base
