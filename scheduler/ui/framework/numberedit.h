// A field for a number, kept within its range while the user types.
#pragma once

#include "scheduler/ui/framework/boundcontrol.h"

#include <optional>
#include <string_view>

namespace framework {

/// Both ends belong to the range.
struct NumberRange {
    std::int32_t low = 0;
    std::int32_t high = 0;
};

/// How many characters the numbers of a range need: the digits of its upper end.
int digitsOf(NumberRange range);

/// The number at the start of a text; 0 when there is none.
std::int32_t numberFromText(std::string_view text);

/// What takes the place of a text that cannot stay.
struct NumberCorrection {
    std::int32_t value = 0;
    bool selectsAll =
        false; ///< so that the next digit replaces it; otherwise the caret stands after the text

    friend bool operator==(const NumberCorrection&, const NumberCorrection&) = default;
};

/// The correction of a typed text; nothing when the text may stay as it is.
std::optional<NumberCorrection> correctNumber(std::string_view text, NumberRange range);

class NumberEdit : public BoundControl<std::int32_t> {
public:
    NumberEdit(ControlHost& host, int id, NumberRange range, Binding binding = nullptr)
        : BoundControl(std::move(binding), host, id), range_(range) {}

    /// The number as it was read, whatever the range.
    std::int32_t value() const override { return numberFromText(text()); }
    void setValue(const std::int32_t& value) override { setText(std::to_string(value)); }

    void onIdle() override;

protected:
    void onAttached() override;

private:
    void select(int from, int to);

    NumberRange range_;
};

} // namespace framework
