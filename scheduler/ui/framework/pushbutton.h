#pragma once

#include "scheduler/ui/framework/control.h"

#include <functional>
#include <utility>

namespace framework {

class PushButton : public Control {
public:
    PushButton(ControlHost& host, int id, std::function<void()> onClicked)
        : Control(host, id), onClicked_(std::move(onClicked)) {}

    bool onNotification(UINT code) override {
        if (code != BN_CLICKED)
            return false;
        onClicked_();
        return true;
    }

private:
    std::function<void()> onClicked_;
};

} // namespace framework
