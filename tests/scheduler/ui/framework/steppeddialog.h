// A dialog whose steps a test prescribes, and a window to own it.
#pragma once

#include "scheduler/ui/framework/dialog.h"
#include "scheduler/ui/framework/edit.h"
#include "scheduler/ui/framework/radiogroup.h"
#include "scheduler/ui/framework/windowclass.h"
#include "tests/scheduler/ui/framework/testdialogs.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace test {

class OwnerWindow : public framework::Window {
public:
    OwnerWindow() {
        framework::WindowClass windowClass;
        framework::WindowParameters parameters;
        parameters.style = WS_OVERLAPPEDWINDOW | WS_VISIBLE;
        parameters.x = 100;
        parameters.y = 50;
        parameters.width = 900;
        parameters.height = 500;
        create(windowClass, parameters);
    }
};

class CheckedEdit : public framework::Edit {
public:
    using Edit::Edit;
    bool check() override {
        ++checks;
        return passes;
    }
    bool passes = true;
    int checks = 0;
};

/// Runs its steps in order, each on a posted message.
class SteppedDialog : public framework::Dialog {
public:
    explicit SteppedDialog(int templateId = IDD_CONTROLS) : Dialog(templateId) {}

    std::string text = "before";
    CheckedEdit edit{*this, IDC_TEXT, framework::bindText(text)};
    CheckedEdit second{*this, IDC_SECOND_TEXT};
    framework::RadioGroup choice{*this, {IDC_FIRST_CHOICE, IDC_SECOND_CHOICE, IDC_THIRD_CHOICE}};
    std::vector<std::function<void()>> steps;
    std::function<void()> onTick;
    std::function<void()> onRest; ///< the queue has run empty
    bool stepping = true;         ///< false: no step follows, and the queue runs empty

    void press(int id) { SendMessageA(GetDlgItem(handle(), id), BM_CLICK, 0, 0); }

    void load() override {
        Dialog::load();
        PostMessageA(handle(), step, 0, 0);
    }
    void onIdle() override {
        Dialog::onIdle();
        if (onRest)
            onRest();
    }

protected:
    framework::Handled onMessage(const framework::Message& message) override {
        if (message.id == WM_TIMER && onTick)
            onTick();
        if (message.id != step)
            return Dialog::onMessage(message);
        if (message.wParam < steps.size()) {
            steps[message.wParam]();
            if (handle() && stepping)
                PostMessageA(handle(), step, message.wParam + 1, 0);
        } else if (!isModalFinished()) {
            ADD_FAILURE() << "the dialog did not end";
            finish(0);
        }
        return 0;
    }

    void updateState() override {
        if (choice.handle())
            enableItem(IDC_DATE, choice.value() == 1);
    }

private:
    static constexpr UINT step = WM_APP + 1;
};

} // namespace test
