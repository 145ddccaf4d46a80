#include "scheduler/ui/framework/propertypage.h"

#include "lib/base/opsys.h"
#include "lib/base/stackalignment.h"

namespace framework {

void PropertyPage::reveal() {
    const HWND sheet = GetParent(handle());
    if (reinterpret_cast<HWND>(SendMessageA(sheet, PSM_GETCURRENTPAGEHWND, 0, 0)) == handle())
        return;
    const LRESULT index = SendMessageA(sheet, PSM_HWNDTOINDEX, reinterpret_cast<WPARAM>(handle()), 0);
    SendMessageA(sheet, PSM_SETCURSEL, static_cast<WPARAM>(index), 0);
}

PROPSHEETPAGEA PropertyPage::platformRecord() {
    PROPSHEETPAGEA record{};
    record.dwSize = sizeof(record);
    // Creates all pages at once, because even pages that the user never opens are checked and stored.
    record.dwFlags = PSP_PREMATURE;
    record.hInstance = base::moduleHandle();
    record.pszTemplate = MAKEINTRESOURCEA(templateId());
    record.pfnDlgProc = &pageProcedure;
    record.lParam = reinterpret_cast<LPARAM>(static_cast<ControlHost*>(this));
    return record;
}

void PropertyPage::lockSize() {
    lockedSize_ = sizeOf(handle());
}

void PropertyPage::onAttached() {
    ControlHost::onAttached();
    ownSize_ = sizeOf(handle());
    unlockSize(); // discards the locked size of an earlier window
    if (onCreated_)
        onCreated_(handle());
}

Handled PropertyPage::onMessage(const Message& message) {
    if (message.id == WM_NOTIFY && reinterpret_cast<const NMHDR*>(message.lParam)->code == PSN_APPLY)
        return updateAndCheck() ? PSNRET_NOERROR : PSNRET_INVALID;
    if (message.id == WM_WINDOWPOSCHANGING && lockedSize_) {
        WINDOWPOS& place = *reinterpret_cast<WINDOWPOS*>(message.lParam);
        place.cx = lockedSize_->cx;
        place.cy = lockedSize_->cy;
    }
    return ControlHost::onMessage(message);
}

CALLED_BY_PLATFORM INT_PTR CALLBACK pageProcedure(HWND page, UINT id, WPARAM wParam, LPARAM lParam) noexcept {
    if (id != WM_INITDIALOG)
        return FALSE;
    const LPARAM object = reinterpret_cast<const PROPSHEETPAGEA*>(lParam)->lParam;
    SetWindowLongA(page, GWL_ID, reinterpret_cast<const ControlHost*>(object)->templateId());
    return dialogProcedure(page, id, wParam, object);
}

} // namespace framework
