#pragma once

#include "scheduler/ui/framework/window.h"

#include <vector>

namespace framework {

class Control;

/// Base of dialogs and pages. A derived class declares its controls as members, each with its field and
/// rules. This class loads, stores, checks and updates them.
class ControlHost : public Window {
public:
    explicit ControlHost(int templateId) : templateId_(templateId) {}

    int templateId() const override { return templateId_; }

    /// Copies fields to the attached controls.
    virtual void load();

    /// Copies the attached controls to fields. Call updateAndCheck() first.
    virtual void store();

    /// Checks the visible, enabled controls in order until one fails.
    [[nodiscard]] virtual bool check();

    /// Checks after an idle pass, which clamps numbers. On OK, the pump's own pass may still be pending.
    [[nodiscard]] bool updateAndCheck();

    /// Makes this dialog or page visible. Called before a message box about a control.
    virtual void reveal() {}

    void onIdle() override;

    /// Call on WM_INITDIALOG: binds this object to the dialog, then attaches and loads the controls.
    void start(HWND dialog);

    /// False if start failed. Do not show or store the dialog then: controls may lack their fields' values.
    bool isStarted() const { return started_; }

protected:
    /// Enables or shows controls that depend on the values of others. Called on start and in each idle pass.
    virtual void updateState() {}

    /// A button's command or a control's notification. True if handled or if this object was destroyed. After
    /// false, the control's onNotification is called.
    [[nodiscard]] virtual bool onCommand(int id, UINT code);

    Handled onMessage(const Message& message) override;

    // For dialog items without a Control object: static texts and individual radio buttons.
    void enableItem(int id, bool enabled);
    void showItem(int id, bool visible);

private:
    friend class Control;
    void add(Control& control) { controls_.push_back(&control); }
    void remove(Control& control) { std::erase(controls_, &control); }

    int templateId_;
    bool started_ = false;
    std::vector<Control*> controls_;
};

/// The dialog procedure of all dialogs. The creation parameter is the ControlHost.
INT_PTR CALLBACK dialogProcedure(HWND dialog, UINT id, WPARAM wParam, LPARAM lParam) noexcept;

} // namespace framework
