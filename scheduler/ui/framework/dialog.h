// A dialog made from a template, run modally.
#pragma once

#include "scheduler/ui/framework/controlhost.h"
#include "scheduler/ui/framework/modalowner.h"

namespace framework {

class Dialog : public ControlHost {
public:
    using ControlHost::ControlHost;
    ~Dialog() override;

    /// Creates the dialog, not shown yet, and loads its controls. False, without
    /// a window, when there is no such template or the loading failed.
    [[nodiscard]] bool open(HWND owner);

    /// Shows the dialog and runs it until it ends: IDOK when the controls were stored, notMade when it could
    /// not be opened, else IDCANCEL. The owner is disabled meanwhile, and the dialog is gone afterwards.
    int runModal(HWND owner);

    bool preTranslate(MSG& message) override;
    bool isModalFinished() const override;

protected:
    bool onCommand(int id, UINT code) override;
    Handled onMessage(const Message& message) override;

    /// Checks and stores the controls, and ends the dialog unless a check fails.
    virtual void onOk();
    virtual void onCancel();

    /// Ends the modal run with a result.
    void finish(int result);

private:
    void close();
};

} // namespace framework
