#pragma once

#include "scheduler/ui/framework/window.h"

#include <string>

namespace framework {

class ControlHost;

/// Base of all controls, each bound to a dialog's control by its id. Declare controls as members of their
/// dialog or page, which must outlive them. They are loaded, stored and checked in order of declaration.
class Control : public Window {
public:
    Control(ControlHost& host, int id);
    ~Control() override;

    int id() const { return id_; }

    /// False if the dialog has no such control.
    [[nodiscard]] bool attachIn(HWND dialog);

    // load: from field to control; store: from control to field. Without a binding, they do nothing.
    virtual void load() {}
    virtual void store() {}

    // The control's own state, whether or not its dialog is visible.
    bool isVisible() const;
    bool isEnabled() const;

    /// Whether the input may be stored. If not, the user has been told why.
    [[nodiscard]] virtual bool check() { return true; }

    /// Handles a notification code. True if handled, or if the control or the dialog has been destroyed.
    [[nodiscard]] virtual bool onNotification(UINT code);

    /// Paints an item of an owner-drawn control. True if handled.
    [[nodiscard]] virtual bool onDrawItem(const DRAWITEMSTRUCT& item);

    // These do nothing if nothing would change, so that idle passes do not redraw the control.
    void setEnabled(bool enabled);
    void setVisible(bool visible);
    void setText(const std::string& text);

    std::string text() const;

    /// Shows the control's page and the message, then focuses the control.
    void reportInvalid(const std::string& message);

protected:
    Handled onMessage(const Message& message) override;

    LRESULT send(UINT id, WPARAM wParam = 0, LPARAM lParam = 0) const;

private:
    ControlHost& host_;
    int id_;
};

// Like the platform's functions, but do nothing if nothing would change.
void enableWindow(HWND window, bool enabled);
void showWindow(HWND window, bool visible);

/// `className`: at most 31 characters; case is ignored.
[[nodiscard]] bool isOfClass(HWND window, const char* className);

/// The static text directly before the control; null if there is none or it has no access key.
HWND labelOf(HWND control);

} // namespace framework
