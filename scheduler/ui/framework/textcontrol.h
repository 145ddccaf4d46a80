#pragma once

#include "scheduler/ui/framework/boundcontrol.h"

namespace framework {

class TextControl : public BoundControl<std::string> {
public:
    TextControl(ControlHost& host, int id, Binding binding = nullptr)
        : BoundControl(std::move(binding), host, id) {}

    std::string value() const override { return text(); }
    void setValue(const std::string& value) override { setText(value); }

    /// Read-only: there is nothing to store.
    void store() override {}
};

} // namespace framework
