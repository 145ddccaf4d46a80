// Which rows the schedule's list paints again because they say something else.
#pragma once

#include "scheduler/ui/framework/window.h"

#include <windows.h>

#include <commctrl.h>

#include <vector>

namespace test {

/// Those from its birth on.
class RedrawnRows : public framework::MessageFilter {
public:
    explicit RedrawnRows(framework::Window& list) : list_(list) { list_.addFilter(*this); }
    RedrawnRows(const RedrawnRows&) = delete;
    RedrawnRows& operator=(const RedrawnRows&) = delete;
    ~RedrawnRows() override { list_.removeFilter(*this); }

    std::vector<WPARAM> rows;

private:
    framework::Handled filterMessage(framework::Window&, const framework::Message& message) override {
        if (message.id == LVM_REDRAWITEMS)
            rows.push_back(message.wParam);
        return std::nullopt;
    }

    framework::Window& list_;
};

} // namespace test
