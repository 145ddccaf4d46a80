#include "scheduler/ui/framework/propertysheet.h"

#include "lib/base/opsys.h"
#include "scheduler/ui/framework/messagepump.h"
#include "scheduler/ui/framework/sheetfit.h"

#include <algorithm>

namespace framework {

PropertySheetDialog::~PropertySheetDialog() {
    close();
}

int PropertySheetDialog::run(const std::string& title, HWND owner) {
    int result = notCreated;
    {
        const ModalOwner waiting(owner);
        beginModal();
        if (open(title, owner)) {
            MessagePump::instance().runModalLoop(*this);
            const bool accepted =
                isModalFinished() && handle() && SendMessageA(handle(), PSM_GETRESULT, 0, 0) > 0;
            result = accepted ? IDOK : IDCANCEL;
        }
    }
    // Stores only after all pages have passed their checks: after a failed check, the user may cancel.
    if (result == IDOK)
        for (PropertyPage* page : pages_)
            page->store();
    close();
    return result;
}

bool PropertySheetDialog::open(const std::string& title, HWND owner) {
    std::vector<PROPSHEETPAGEA> records;
    for (PropertyPage* page : pages_) {
        page->onCreated([this](HWND window) { attachTo(GetParent(window)); });
        records.push_back(page->platformRecord());
    }
    PROPSHEETHEADERA header{};
    header.dwSize = sizeof(header);
    header.dwFlags = PSH_PROPSHEETPAGE | PSH_MODELESS;
    header.hwndParent = owner;
    header.hInstance = base::moduleHandle();
    header.pszCaption = title.c_str();
    header.nPages = static_cast<UINT>(records.size());
    header.ppsp = records.data();
    constexpr INT_PTR failed = -1;
    const INT_PTR result = PropertySheetA(&header);
    if (result == 0 || result == failed)
        return false;
    const auto sheet = reinterpret_cast<HWND>(result);
    attachTo(sheet);
    if (!handle())
        DestroyWindow(sheet);
    return handle() && std::ranges::all_of(pages_, &PropertyPage::isStarted);
}

void PropertySheetDialog::attachTo(HWND sheet) {
    if (!handle())
        static_cast<void>(attach(sheet));
}

void PropertySheetDialog::createPages() {
    if (std::ranges::all_of(pages_, &PropertyPage::handle))
        return;
    for (std::size_t index = pages_.size(); index-- > 0;) // the first page last, so that it is shown
        SendMessageA(handle(), PSM_SETCURSEL, index, 0);
}

void PropertySheetDialog::fitToPages() {
    std::vector<SheetPage> pages;
    for (PropertyPage* page : pages_) {
        page->unlockSize();
        pages.push_back({page->handle(), page->ownSize()});
    }
    fitSheet(handle(), pages);
    for (PropertyPage* page : pages_)
        page->lockSize();
}

Handled PropertySheetDialog::onMessage(const Message& message) {
    // Resizes while the sheet is hidden: some window managers ignore a resize during the first display.
    if (message.id == WM_SHOWWINDOW && message.wParam) {
        createPages();
        fitToPages();
    }
    return Window::onMessage(message);
}

void PropertySheetDialog::close() {
    if (handle())
        DestroyWindow(handle());
}

void PropertySheetDialog::onIdle() {
    for (PropertyPage* page : pages_)
        if (page->handle())
            page->onIdle();
}

bool PropertySheetDialog::preTranslate(MSG& message) {
    return message.message != WM_MOUSEMOVE &&
           SendMessageA(handle(), PSM_ISDIALOGMESSAGE, 0, reinterpret_cast<LPARAM>(&message)) != 0;
}

bool PropertySheetDialog::isModalFinished() const {
    // A finished sheet has no current page and waits to be destroyed.
    return !handle() || SendMessageA(handle(), PSM_GETCURRENTPAGEHWND, 0, 0) == 0;
}

} // namespace framework
