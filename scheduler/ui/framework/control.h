// A control of a dialog: found by its id, subclassed, loaded from a record's field and stored into it.
#pragma once

#include "scheduler/ui/framework/window.h"

#include <string>

namespace framework {

class ControlHost;

/// Base of all control classes. Declared as a member of its dialog or page, which it has to die before; it is
/// in the dialog's order of controls by its construction.
class Control : public Window {
public:
    /// `id` is the control's number in the dialog template.
    Control(ControlHost& host, int id);
    ~Control() override;

    int id() const { return id_; }

    /// Finds the control in the dialog's window and binds this object to it.
    [[nodiscard]] bool attachIn(HWND dialog);

    /// Field to control, control to field. Nothing happens without a binding.
    virtual void load() {}
    virtual void store() {}

    // The control's own state, whether or not its dialog can be seen.
    bool isVisible() const;
    bool isEnabled() const;

    /// Whether what was typed may be stored. One that says no has told the user why.
    [[nodiscard]] virtual bool check() { return true; }

    /// A notification that the control sent to its dialog. True when that is settled, or when the control or
    /// its dialog was destroyed over it.
    [[nodiscard]] virtual bool onNotification(UINT code);

    /// An owner-drawn control's request to paint one item.
    [[nodiscard]] virtual bool onDrawItem(const DRAWITEMSTRUCT& item);

    // These leave the platform alone when nothing changes, so that the idle pass draws nothing again.
    void setEnabled(bool enabled);
    void setVisible(bool visible);
    void setText(const std::string& text);

    std::string text() const;

    /// Reports why the dialog cannot be stored: shows the dialog's page and the message, and gives this
    /// control the focus.
    void reportInvalid(const std::string& message);

protected:
    Handled onMessage(const Message& message) override;

    /// Sends the control a message of its class.
    LRESULT send(UINT id, WPARAM wParam = 0, LPARAM lParam = 0) const;

private:
    ControlHost& host_;
    int id_;
};

/// Enables or disables a window that is not so already.
void enableWindow(HWND window, bool enabled);

/// Shows or hides a window that is not so already.
void showWindow(HWND window, bool visible);

/// Whether a window's class has this name of at most 31 characters.
[[nodiscard]] bool isOfClass(HWND window, const char* className);

/// The label that goes with a control: the static text directly before it, if that has an access key. Else
/// null.
HWND labelOf(HWND control);

} // namespace framework
