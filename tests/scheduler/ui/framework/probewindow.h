#pragma once

#include "scheduler/ui/framework/window.h"
#include "scheduler/ui/framework/windowclass.h"

#include <functional>

namespace test {

inline constexpr UINT probe = WM_APP + 1;
inline constexpr UINT nested = WM_APP + 2;

/// A window whose handlers the test supplies.
class ProbeWindow : public framework::Window {
public:
    std::function<framework::Handled(const framework::Message&)> handler;
    std::function<bool(MSG&)> translator;
    std::function<void()> idled;
    int attachments = 0;

    bool open(DWORD style = WS_OVERLAPPEDWINDOW, RECT place = {100, 50, 500, 350}, HWND parent = nullptr) {
        framework::WindowClass windowClass;
        framework::WindowParameters parameters;
        parameters.style = style;
        parameters.x = place.left;
        parameters.y = place.top;
        parameters.width = place.right - place.left;
        parameters.height = place.bottom - place.top;
        parameters.parent = parent;
        return create(windowClass, parameters);
    }

    void onAttached() override { ++attachments; }
    framework::Handled onMessage(const framework::Message& message) override {
        return handler ? handler(message) : std::nullopt;
    }
    bool preTranslate(MSG& message) override { return translator && translator(message); }
    void onIdle() override {
        if (idled)
            idled();
    }
};

inline HWND createPlain(const char* className, DWORD style, RECT place, HWND parent = nullptr) {
    return CreateWindowExA(0, className, "", style, place.left, place.top, place.right - place.left,
                           place.bottom - place.top, parent, nullptr, nullptr, nullptr);
}

} // namespace test
