// A field for a number that is clamped to its range while the user types.
#pragma once

#include "scheduler/ui/framework/boundcontrol.h"

#include <optional>
#include <string_view>

namespace framework {

/// Inclusive.
struct NumberRange {
    std::int32_t low = 0;
    std::int32_t high = 0;
};

/// The number of digits of the upper bound.
int digitsOf(NumberRange range);

/// The number at the start of a text, clamped to 32 bits; 0 if there is none.
std::int32_t numberFromText(std::string_view text);

/// The number to show, and whether to select it. Otherwise the caret is placed after it.
struct NumberCorrection {
    std::int32_t value = 0;
    bool selectsAll = false;

    friend bool operator==(const NumberCorrection&, const NumberCorrection&) = default;
};

/// Empty if the typed number is in the range and not 0.
std::optional<NumberCorrection> correctNumber(std::string_view text, NumberRange range);

class NumberEdit : public BoundControl<std::int32_t> {
public:
    NumberEdit(ControlHost& host, int id, NumberRange range, Binding binding = nullptr)
        : BoundControl(std::move(binding), host, id), range_(range) {}

    /// Not clamped to the range.
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
