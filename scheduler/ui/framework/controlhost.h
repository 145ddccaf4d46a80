// What dialogs and property pages share: a list of controls, made from a dialog template.
#pragma once

#include "scheduler/ui/framework/window.h"

#include <vector>

namespace framework {

class Control;

/// Base of dialogs and pages. A derived class declares its controls as members, each with its field and
/// rules; loading, storing, checking and idle updates then follow from the list.
class ControlHost : public Window {
public:
    explicit ControlHost(int templateId) : templateId_(templateId) {}

    int templateId() const override { return templateId_; }

    /// Fields to controls, once the controls are attached; a class that does more after it extends it.
    virtual void load();

    /// Controls to fields. The caller has checked before.
    virtual void store();

    /// Runs the check of every control that is visible and enabled, in their order, up to the first that
    /// fails.
    [[nodiscard]] virtual bool check();

    /// To be called before a store: runs an idle update, because numbers typed since the last idle pass may
    /// be out of range, and then the checks.
    [[nodiscard]] bool updateAndCheck();

    /// Brings this dialog before the user, so that a message about it is understood.
    virtual void reveal() {}

    void onIdle() override;

    /// Makes the platform's dialog window this object's, on its first message, and starts the controls.
    void start(HWND dialog);

    /// Whether the last start came to its end. A dialog whose start failed shows less than its fields hold,
    /// and must not come before the user, who could store it.
    bool isStarted() const { return started_; }

protected:
    /// Enables, disables, shows and hides what depends on the controls' values: at the start and after
    /// whatever the user does.
    virtual void updateState() {}

    /// A command of the dialog: a push button, or a notification of any of its controls. True when that
    /// settles it, and when this object was destroyed over it; otherwise the control itself is told.
    [[nodiscard]] virtual bool onCommand(int id, UINT code);

    Handled onMessage(const Message& message) override;

    // For what has no object: plain texts, and single buttons of a group.
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

/// The dialog procedure of all dialogs, whose creation parameter is their ControlHost.
INT_PTR CALLBACK dialogProcedure(HWND dialog, UINT id, WPARAM wParam, LPARAM lParam) noexcept;

} // namespace framework
