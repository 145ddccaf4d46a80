// A group of radio buttons, bound to the index of the checked one, or to a flag: 0 for the first button.
#pragma once

#include "scheduler/ui/framework/boundcontrol.h"

#include <vector>

namespace framework {

class RadioGroup : public BoundControl<std::int32_t> {
public:
    /// The value of a group with no button checked.
    static constexpr std::int32_t noButton = -1;

    /// The buttons' ids in the order of their values; at least one. The first stands for the group.
    RadioGroup(ControlHost& host, std::vector<int> ids, Binding binding = nullptr);

    /// The index of the first checked button, or noButton.
    std::int32_t value() const override;

    /// Checks the button of that index, if there is one, and unchecks the others.
    void setValue(const std::int32_t& value) override;

    /// Lets the Tab key stop at the checked button or, when that is disabled or there is none, at the first
    /// one that can be used: the platform leaves such a group out.
    void keepTabStop();

private:
    HWND button(int id) const;

    std::vector<int> ids_;
};

} // namespace framework
