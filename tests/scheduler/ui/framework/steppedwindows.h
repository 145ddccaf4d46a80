#pragma once

#include "scheduler/ui/framework/dialog.h"
#include "scheduler/ui/framework/edit.h"
#include "scheduler/ui/framework/propertysheet.h"
#include "scheduler/ui/framework/radiogroup.h"
#include "tests/scheduler/ui/framework/testdialogs.h"
#include "tests/support/timeout.h"

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

namespace test {

class LoggingEdit : public framework::Edit {
public:
    LoggingEdit(framework::ControlHost& host, int id, std::string name, std::string& log)
        : Edit(host, id, framework::bindText(field)), name_(std::move(name)), log_(log) {}

    void load() override {
        record("load");
        if (failsToLoad)
            throw std::runtime_error("refused");
        Edit::load();
    }
    void store() override {
        record("store");
        Edit::store();
    }
    bool check() override {
        record("check");
        if (!passes && onFailure)
            onFailure();
        return passes;
    }
    void onIdle() override {
        if (logsIdle)
            record("idle");
    }
    bool onNotification(UINT code) override {
        if (code == EN_CHANGE && onChange)
            onChange();
        return code == EN_CHANGE;
    }

    std::string field = "before";
    bool failsToLoad = false;
    bool passes = true;
    bool logsIdle = false;
    std::function<void()> onChange;
    std::function<void()> onFailure;

private:
    void record(const char* event) { log_ += event + (" " + name_) + "; "; }

    std::string name_;
    std::string& log_;
};

/// Runs its steps in order, each in response to a posted message.
class Stepped {
public:
    std::vector<std::function<void()>> steps;
    bool stepping = true; ///< if false, no further step is posted
    std::string log;

    virtual ~Stepped() = default;

    int runSteps(HWND owner = nullptr) {
        began_ = false;
        const int result = run(owner);
        EXPECT_EQ(began_, !steps.empty());
        return result;
    }
    void press(int id) { SendMessageA(GetDlgItem(window().handle(), id), BM_CLICK, 0, 0); }
    virtual framework::Window& window() = 0;

protected:
    virtual int run(HWND owner) = 0;
    void begin() {
        PostMessageA(window().handle(), step, 0, 0);
        SetTimer(window().handle(), giveUp, timeout, nullptr);
    }
    bool handleStep(const framework::Message& message) {
        if (message.id == step && message.wParam < steps.size()) {
            began_ = true;
            steps[message.wParam]();
            if (window().handle() && stepping)
                PostMessageA(window().handle(), step, message.wParam + 1, 0);
        } else if (message.id == step || (message.id == WM_TIMER && message.wParam == giveUp)) {
            EXPECT_TRUE(message.id == step && window().isModalFinished()) << "did not close";
            DestroyWindow(window().handle());
        } else {
            return false;
        }
        return true;
    }

private:
    static constexpr UINT step = WM_APP + 1;
    static constexpr UINT_PTR giveUp = 99;

    bool began_ = false;
};

class SteppedDialog : public framework::Dialog, public Stepped {
public:
    explicit SteppedDialog(int templateId = IDD_CONTROLS) : Dialog(templateId) {}

    framework::Window& window() override { return *this; }
    void onIdle() override {
        Dialog::onIdle();
        if (whenIdle)
            whenIdle();
    }

    LoggingEdit first{*this, IDC_TEXT, "first", log};
    LoggingEdit second{*this, IDC_SECOND_TEXT, "second", log};
    framework::RadioGroup choice{*this, {IDC_FIRST_CHOICE, IDC_SECOND_CHOICE, IDC_THIRD_CHOICE}};
    std::function<void()> whenIdle;

protected:
    int run(HWND owner) override { return runModal(owner); }
    void onAttached() override { begin(); }
    framework::Handled onMessage(const framework::Message& message) override {
        return handleStep(message) ? framework::Handled(0) : Dialog::onMessage(message);
    }
    void updateState() override {
        if (choice.handle())
            enableItem(IDC_DATE, choice.value() == 1);
    }
};

class SteppedPage : public framework::PropertyPage {
public:
    SteppedPage(int templateId, int editId, std::string name, std::string& log)
        : PropertyPage(templateId), edit(*this, editId, std::move(name), log) {}

    bool isShown() const { return IsWindowVisible(handle()); }

    LoggingEdit edit;
    int updates = 0;

protected:
    void updateState() override { ++updates; }
};

class SteppedSheet : public framework::PropertySheetDialog, public Stepped {
public:
    explicit SteppedSheet(int firstPage = IDD_FIRST_PAGE) : first(firstPage, IDC_TEXT, "first", log) {
        add(first);
        add(second);
    }

    framework::Window& window() override { return *this; }
    void turnTo(int page) { SendMessageA(handle(), PSM_SETCURSEL, static_cast<WPARAM>(page), 0); }

    SteppedPage first;
    SteppedPage second{IDD_SECOND_PAGE, IDC_SECOND_TEXT, "second", log};
    std::function<void()> beforeShown;

protected:
    int run(HWND owner) override { return PropertySheetDialog::run("The Sheet", owner); }
    void onAttached() override { begin(); }
    framework::Handled onMessage(const framework::Message& message) override {
        if (handleStep(message))
            return 0;
        const framework::Handled handled = PropertySheetDialog::onMessage(message);
        if (message.id == WM_SHOWWINDOW && message.wParam && beforeShown)
            beforeShown();
        return handled;
    }
};

} // namespace test
