// Radio buttons, bound to a variable that holds the checked button's index, or to a flag (0 for the first).
#pragma once

#include "scheduler/ui/framework/boundcontrol.h"

#include <vector>

namespace framework {

class RadioGroup : public BoundControl<std::int32_t> {
public:
    /// The value while no button is checked.
    static constexpr std::int32_t noButton = -1;

    /// `ids`: at least one, in the order of their values. The first is the control's id.
    RadioGroup(ControlHost& host, std::vector<int> ids, Binding binding = nullptr);

    /// The index of the first checked button, or noButton.
    std::int32_t value() const override;

    /// Checks this button and unchecks the others. If the index is out of range, unchecks all.
    void setValue(const std::int32_t& value) override;

    /// Gives the tab stop to the checked button, else to the first enabled one: Tab must reach the group.
    void keepTabStop();

private:
    HWND button(int id) const;

    std::vector<int> ids_;
};

} // namespace framework
