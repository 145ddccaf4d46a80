// A page of a property sheet.
#pragma once

#include "scheduler/ui/framework/controlhost.h"

#include <prsht.h>

namespace framework {

/// The user presses OK on the sheet: each page in turn is checked, and one that fails keeps the sheet open.
class PropertyPage : public ControlHost {
public:
    using ControlHost::ControlHost;

    /// Turns the sheet to this page.
    void reveal() override;

    /// The record by which the platform makes the page. It refers to this object.
    PROPSHEETPAGEA platformRecord();

protected:
    Handled onMessage(const Message& message) override;
};

/// The dialog procedure of pages: gives the page's window its template's number as its id.
INT_PTR CALLBACK pageProcedure(HWND page, UINT id, WPARAM wParam, LPARAM lParam) noexcept;

} // namespace framework
