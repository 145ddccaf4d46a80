// A modal dialog made from a template.
#pragma once

#include "scheduler/ui/framework/controlhost.h"
#include "scheduler/ui/framework/modalowner.h"

namespace framework {

class Dialog : public ControlHost {
public:
    using ControlHost::ControlHost;
    ~Dialog() override;

    /// Creates the dialog, hidden, and loads its controls. On failure, returns false and leaves no window.
    [[nodiscard]] bool open(HWND owner);

    /// Runs until closed, with the owner disabled. Returns IDOK (stored), IDCANCEL or notCreated (failed).
    int runModal(HWND owner);

    bool preTranslate(MSG& message) override;
    bool isModalFinished() const override;

protected:
    bool onCommand(int id, UINT code) override;
    Handled onMessage(const Message& message) override;

    /// Checks and stores the controls, then closes. If a check fails, the dialog stays open.
    virtual void onOk();
    virtual void onCancel();
    void finish(int result);

private:
    void close();
};

} // namespace framework
