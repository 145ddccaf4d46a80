#pragma once

#include "scheduler/ui/framework/boundcontrol.h"

namespace framework {

class CheckBox : public BoundControl<std::int32_t> {
public:
    CheckBox(ControlHost& host, int id, Binding binding = nullptr)
        : BoundControl(std::move(binding), host, id) {}

    bool isChecked() const { return value() == BST_CHECKED; }

    std::int32_t value() const override { return static_cast<std::int32_t>(send(BM_GETCHECK)); }
    void setValue(const std::int32_t& value) override { send(BM_SETCHECK, static_cast<WPARAM>(value)); }
};

} // namespace framework
