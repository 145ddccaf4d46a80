// Radio buttons whose field is the checked button's index, or a flag that is 0 for the first button.
#pragma once

#include "scheduler/ui/framework/boundcontrol.h"

#include <vector>

namespace framework {

class RadioGroup : public BoundControl<std::int32_t> {
public:
    static constexpr std::int32_t noButton = -1;

    /// `ids`: at least one. The value is an index in `ids`. The first is the control's id.
    RadioGroup(ControlHost& host, std::vector<int> ids, Binding binding = nullptr);

    /// The index of the first checked button, or noButton.
    std::int32_t value() const override;

    /// Checks the button with this index and unchecks the others. If the index is out of range, unchecks all.
    void setValue(const std::int32_t& value) override;

    /// Gives the tab stop to the checked button if it is enabled, else to the first enabled button.
    void keepTabStop();

private:
    HWND button(int id) const;

    std::vector<int> ids_;
};

} // namespace framework
