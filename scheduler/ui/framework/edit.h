#pragma once

#include "scheduler/ui/framework/boundcontrol.h"

namespace framework {

class Edit : public BoundControl<std::string> {
public:
    /// `limit`: the most characters that the user can type; 0: the platform's limit.
    Edit(ControlHost& host, int id, Binding binding = nullptr, int limit = 0)
        : BoundControl(std::move(binding), host, id), limit_(limit) {}

    std::string value() const override { return text(); }
    void setValue(const std::string& value) override { setText(value); }

protected:
    void onAttached() override {
        if (limit_ > 0)
            send(EM_LIMITTEXT, static_cast<WPARAM>(limit_));
    }

private:
    int limit_;
};

} // namespace framework
