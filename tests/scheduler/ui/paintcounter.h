#pragma once

#include "scheduler/ui/framework/window.h"

#include <windows.h>

namespace test {

class PaintCounter : public framework::MessageFilter {
public:
    explicit PaintCounter(framework::Window& window) : window_(window) { window_.addFilter(*this); }
    explicit PaintCounter(HWND window) : PaintCounter(*framework::Window::of(window)) {}
    PaintCounter(const PaintCounter&) = delete;
    PaintCounter& operator=(const PaintCounter&) = delete;
    ~PaintCounter() override { window_.removeFilter(*this); }

    int count = 0;

private:
    framework::Handled filterMessage(framework::Window&, const framework::Message& message) override {
        count += message.id == WM_PAINT;
        return std::nullopt;
    }

    framework::Window& window_;
};

} // namespace test
