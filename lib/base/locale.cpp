#include "lib/base/locale.h"

#include "lib/base/sourceregistration.h"

#include <windows.h>

#include <array>

namespace base {
namespace {

[[maybe_unused]] const bool registered = registerSourceFile(__FILE__, RELEASE_DATE);

using LocaleText = std::array<char, 128>;

/// `count` is the platform's result. It includes the terminating zero; 0 means failure.
std::string textOf(const LocaleText& buffer, int count) {
    return count > 0 ? std::string(buffer.data(), static_cast<std::size_t>(count - 1)) : std::string();
}

} // namespace

char lowerCase(char character) {
    // CharLowerA treats a "pointer" below 0x10000 as a single character and returns a character the same way.
    const auto code = static_cast<UINT_PTR>(static_cast<unsigned char>(character));
    return static_cast<char>(reinterpret_cast<UINT_PTR>(CharLowerA(reinterpret_cast<LPSTR>(code))));
}

void toSystemTime(TimeValue t, SYSTEMTIME& out) {
    const LocalTime local = t.local();
    out = {};
    out.wYear = static_cast<WORD>(local.year);
    out.wMonth = static_cast<WORD>(local.month);
    out.wDayOfWeek = static_cast<WORD>(local.dayOfWeek);
    out.wDay = static_cast<WORD>(local.day);
    out.wHour = static_cast<WORD>(local.hour);
    out.wMinute = static_cast<WORD>(local.minute);
    out.wSecond = static_cast<WORD>(local.second);
}

std::string formatLocaleDate(TimeValue t, bool longForm) {
    if (t == TimeValue())
        return {};
    SYSTEMTIME time;
    toSystemTime(t, time);
    LocaleText buffer;
    return textOf(buffer, GetDateFormatA(LOCALE_USER_DEFAULT, longForm ? DATE_LONGDATE : DATE_SHORTDATE,
                                         &time, nullptr, buffer.data(), static_cast<int>(buffer.size())));
}

std::string formatLocaleTime(TimeValue t, bool force24Hour, bool noSeconds) {
    if (t == TimeValue())
        return {};
    SYSTEMTIME time;
    toSystemTime(t, time);
    const DWORD flags = (force24Hour ? TIME_FORCE24HOURFORMAT : 0U) | (noSeconds ? TIME_NOSECONDS : 0U);
    LocaleText buffer;
    return textOf(buffer, GetTimeFormatA(LOCALE_USER_DEFAULT, flags, &time, nullptr, buffer.data(),
                                         static_cast<int>(buffer.size())));
}

} // namespace base
