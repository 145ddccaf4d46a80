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

    /// Copies field to control, or control to field. Does nothing without a binding.
    virtual void load() {}
    virtual void store() {}

    // The control's own state, whether or not its dialog is visible.
    bool isVisible() const;
    bool isEnabled() const;

    /// Whether the input may be stored. If not, the user has been told why.
    [[nodiscard]] virtual bool check() { return true; }

    /// A notification to the dialog. True if handled, or if the control or the dialog has been destroyed.
    [[nodiscard]] virtual bool onNotification(UINT code);

    /// Paints an item of an owner-drawn control.
    [[nodiscard]] virtual bool onDrawItem(const DRAWITEMSTRUCT& item);

    // No effect without a change, so that idle passes do not redraw.
    void setEnabled(bool enabled);
    void setVisible(bool visible);
    void setText(const std::string& text);

    std::string text() const;

    /// Turns to the control's page, shows the message and focuses the control.
    void reportInvalid(const std::string& message);

protected:
    Handled onMessage(const Message& message) override;

    LRESULT send(UINT id, WPARAM wParam = 0, LPARAM lParam = 0) const;

private:
    ControlHost& host_;
    int id_;
};

/// Like the platform's functions, but without effect if nothing changes.
void enableWindow(HWND window, bool enabled);
void showWindow(HWND window, bool visible);

/// `className`: at most 31 characters, in any case.
[[nodiscard]] bool isOfClass(HWND window, const char* className);

/// The static text directly before the control, if it has an access key; else null.
HWND labelOf(HWND control);

} // namespace framework
