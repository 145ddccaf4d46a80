#pragma once

#include "scheduler/ui/framework/window.h"

#include <windows.h>

namespace test {

/// Counts the paintings of a window.
class Paintings : public framework::MessageFilter {
public:
    explicit Paintings(framework::Window& window) : window_(window) { window_.addFilter(*this); }
    explicit Paintings(HWND window) : Paintings(*framework::Window::of(window)) {}
    Paintings(const Paintings&) = delete;
    Paintings& operator=(const Paintings&) = delete;
    ~Paintings() override { window_.removeFilter(*this); }

    int count = 0;

private:
    framework::Handled filterMessage(framework::Window&, const framework::Message& message) override {
        count += message.id == WM_PAINT;
        return std::nullopt;
    }

    framework::Window& window_;
};

} // namespace test
