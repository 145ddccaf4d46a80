// A page of a property sheet.
#pragma once

#include "scheduler/ui/framework/controlhost.h"

#include <prsht.h>

#include <functional>
#include <optional>
#include <utility>

namespace framework {

/// The user presses OK on the sheet: each page in turn is checked, and one that fails keeps the sheet open.
class PropertyPage : public ControlHost {
public:
    using ControlHost::ControlHost;

    /// Turns the sheet to this page.
    void reveal() override;

    /// The record by which the platform makes the page. It refers to this object.
    PROPSHEETPAGEA platformRecord();

    /// Calls `function` when the page's window is created, while its sheet is still being created and cannot
    /// be seen yet.
    void onCreated(std::function<void(HWND page)> function) { onCreated_ = std::move(function); }

    /// In pixels, as the template asks for it in the units of the page's font; whatever room the sheet gives
    /// it.
    SIZE ownSize() const { return ownSize_; }

    /// From now on the page stays as large as it is, whatever size its sheet gives it, as a sheet may each
    /// time that it turns to a page: it knows only the size that it had given it first.
    void holdSize();
    void releaseSize() { heldSize_.reset(); }

protected:
    void onAttached() override;
    Handled onMessage(const Message& message) override;

private:
    std::function<void(HWND)> onCreated_;
    SIZE ownSize_{};
    std::optional<SIZE> heldSize_;
};

/// The dialog procedure of pages: gives the page's window its template's number as its id.
INT_PTR CALLBACK pageProcedure(HWND page, UINT id, WPARAM wParam, LPARAM lParam) noexcept;

} // namespace framework
