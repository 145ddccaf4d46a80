#include "scheduler/ui/framework/numberedit.h"

#include "lib/base/strings.h"

#include <algorithm>
#include <limits>

namespace framework {

int digitsOf(NumberRange range) {
    return static_cast<int>(std::to_string(range.high).size());
}

std::int32_t numberFromText(std::string_view text) {
    using Limits = std::numeric_limits<std::int32_t>;
    return static_cast<std::int32_t>(
        std::clamp<std::int64_t>(base::toInteger(text, 10), Limits::min(), Limits::max()));
}

std::optional<NumberCorrection> correctNumber(std::string_view text, NumberRange range) {
    const std::int32_t number = numberFromText(text);
    const std::int32_t clamped = std::clamp(number, range.low, range.high);
    // A valid 0 is rewritten, too. That selects it, so that the next digit replaces it.
    if (number == clamped && number != 0)
        return std::nullopt;
    return NumberCorrection{clamped, number <= range.high};
}

void NumberEdit::onAttached() {
    SetWindowLongA(handle(), GWL_STYLE, GetWindowLongA(handle(), GWL_STYLE) | ES_NUMBER);
    send(EM_LIMITTEXT, static_cast<WPARAM>(digitsOf(range_)));
}

void NumberEdit::onIdle() {
    const auto correction = correctNumber(text(), range_);
    if (!correction)
        return;
    setValue(correction->value);
    const int length = GetWindowTextLengthA(handle());
    select(correction->selectsAll ? 0 : length, length);
}

void NumberEdit::select(int from, int to) {
    DWORD oldFrom = 0;
    DWORD oldTo = 0;
    send(EM_GETSEL, reinterpret_cast<WPARAM>(&oldFrom), reinterpret_cast<LPARAM>(&oldTo));
    if (static_cast<int>(oldFrom) != from || static_cast<int>(oldTo) != to)
        send(EM_SETSEL, static_cast<WPARAM>(from), to);
}

} // namespace framework
