// A window whose messages a test handles.
#pragma once

#include "scheduler/ui/framework/window.h"
#include "scheduler/ui/framework/windowclass.h"

#include <functional>

namespace test {

inline constexpr UINT probe = WM_APP + 1;
inline constexpr UINT nested = WM_APP + 2;

/// Hands each message to a function that the test gives.
class ProbeWindow : public framework::Window {
public:
    std::function<framework::Handled(const framework::Message&)> handler;
    int attachments = 0;

    void onAttached() override { ++attachments; }
    framework::Handled onMessage(const framework::Message& message) override {
        return handler ? handler(message) : std::nullopt;
    }
};

inline bool createProbe(ProbeWindow& window) {
    framework::WindowClass windowClass;
    framework::WindowParameters parameters;
    parameters.style = WS_OVERLAPPEDWINDOW;
    return window.create(windowClass, parameters);
}

} // namespace test
