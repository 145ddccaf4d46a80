#include "scheduler/ui/framework/dialog.h"

#include "lib/base/opsys.h"
#include "scheduler/ui/framework/messagepump.h"

namespace framework {

Dialog::~Dialog() {
    close();
}

bool Dialog::open(HWND owner) {
    const HWND dialog =
        CreateDialogParamA(base::moduleHandle(), MAKEINTRESOURCEA(templateId()), owner, &dialogProcedure,
                           reinterpret_cast<LPARAM>(static_cast<ControlHost*>(this)));
    if (!dialog)
        return false;
    if (isStarted())
        return true;
    DestroyWindow(dialog);
    return false;
}

void Dialog::close() {
    if (handle())
        DestroyWindow(handle());
}

int Dialog::runModal(HWND owner) {
    {
        const ModalOwner waiting(owner);
        beginModal();
        if (!open(owner))
            return notCreated;
        if (!(GetWindowLongA(handle(), GWL_STYLE) & DS_CENTER))
            centreWindow(handle());
        ShowWindow(handle(), SW_SHOW);
        UpdateWindow(handle());
        MessagePump::instance().runModalLoop(*this);
    }
    // Close after re-enabling the owner: otherwise the platform would activate another program.
    close();
    return modalResult() == IDOK ? IDOK : IDCANCEL;
}

bool Dialog::preTranslate(MSG& message) {
    return message.message != WM_MOUSEMOVE && IsDialogMessageA(handle(), &message);
}

bool Dialog::isModalFinished() const {
    return !handle() || ControlHost::isModalFinished();
}

bool Dialog::onCommand(int id, UINT code) {
    // 0: a button or menu item; 1: an accelerator.
    if (code > 1)
        return false;
    switch (id) {
    case IDOK:
        onOk();
        return true;
    case IDCANCEL:
        onCancel();
        return true;
    default:
        return false;
    }
}

Handled Dialog::onMessage(const Message& message) {
    if (message.id == WM_CLOSE) {
        onCancel();
        return 0;
    }
    return ControlHost::onMessage(message);
}

void Dialog::onOk() {
    if (!updateAndCheck())
        return;
    store();
    finish(IDOK);
}

void Dialog::onCancel() {
    finish(IDCANCEL);
}

void Dialog::finish(int result) {
    endModal(result);
    // The loop checks for the end only after a message from the queue.
    PostMessageA(handle(), WM_NULL, 0, 0);
}

} // namespace framework
