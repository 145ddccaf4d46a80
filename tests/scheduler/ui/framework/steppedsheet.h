// A property sheet of two pages whose user acts in steps.
#pragma once

#include "scheduler/ui/framework/edit.h"
#include "scheduler/ui/framework/propertysheet.h"
#include "tests/scheduler/ui/framework/testdialogs.h"

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace test {

using Steps = std::vector<std::function<void()>>;

class OnePage : public framework::PropertyPage {
public:
    OnePage(int templateId, int editId, std::string name, std::string& log)
        : PropertyPage(templateId),
          edit(*this, editId, framework::bindText(text)),
          name_(std::move(name)),
          log_(log) {}

    void load() override {
        if (failsToLoad)
            throw std::runtime_error("refused");
        PropertyPage::load();
    }
    bool check() override {
        log_ += "check " + name_ + "; ";
        if (!passes) {
            edit.reportInvalid("Not this one.");
            shownWhenFailing = IsWindowVisible(handle());
        }
        return passes && PropertyPage::check();
    }
    void store() override {
        log_ += "store " + name_ + "; ";
        PropertyPage::store();
    }

    std::string text = "before";
    framework::Edit edit;
    bool failsToLoad = false;
    bool passes = true;
    bool shownWhenFailing = false;
    int updates = 0;

protected:
    void updateState() override { ++updates; }

private:
    std::string name_;
    std::string& log_;
};

/// Runs its steps one after the other, each on a message that is posted behind the one before.
class SteppedSheet : public framework::PropertySheetDialog {
public:
    SteppedSheet() {
        add(first);
        add(second);
    }

    int runSteps(HWND owner = nullptr) {
        began_ = false;
        const int result = run("The Sheet", owner);
        EXPECT_EQ(began_, !steps.empty());
        return result;
    }
    void press(int id) { SendMessageA(GetDlgItem(handle(), id), BM_CLICK, 0, 0); }
    bool isShown(const framework::PropertyPage& page) const { return IsWindowVisible(page.handle()); }
    void turnTo(int page) { SendMessageA(handle(), PSM_SETCURSEL, static_cast<WPARAM>(page), 0); }

    std::string log;
    OnePage first{IDD_FIRST_PAGE, IDC_TEXT, "first", log};
    OnePage second{IDD_SECOND_PAGE, IDC_SECOND_TEXT, "second", log};
    Steps steps;
    bool wasReadyWhenShown = false;

protected:
    void onAttached() override { PostMessageA(handle(), step, 0, 0); }

    framework::Handled onMessage(const framework::Message& message) override {
        if (message.id != step) {
            const framework::Handled handled = PropertySheetDialog::onMessage(message);
            if (message.id == WM_SHOWWINDOW && message.wParam)
                wasReadyWhenShown = first.isStarted() && second.isStarted() && !IsWindowVisible(handle());
            return handled;
        }
        if (message.wParam < steps.size()) {
            began_ = true;
            steps[message.wParam]();
            if (handle())
                PostMessageA(handle(), step, message.wParam + 1, 0);
        } else if (!isModalFinished()) {
            ADD_FAILURE() << "the sheet did not end";
            DestroyWindow(handle());
        }
        return 0;
    }

private:
    static constexpr UINT step = WM_APP + 1;

    bool began_ = false;
};

} // namespace test
