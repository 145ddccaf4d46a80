#pragma once

#include "scheduler/ui/framework/controlhost.h"

#include <prsht.h>

#include <functional>
#include <optional>
#include <utility>

namespace framework {

/// A page of a property sheet. OK checks each page in turn; if one fails, the sheet stays open.
class PropertyPage : public ControlHost {
public:
    using ControlHost::ControlHost;

    void reveal() override;

    /// The page's record for PropertySheetA. Contains a pointer to this object.
    PROPSHEETPAGEA platformRecord();

    /// `function` is called when the page's window is created, while the sheet is still hidden.
    void onCreated(std::function<void(HWND page)> function) { onCreated_ = std::move(function); }

    /// The template's size in pixels, in the page's font. The sheet may give the page another size.
    SIZE ownSize() const { return ownSize_; }

    /// Keeps the current size. Otherwise the sheet restores the page's initial size when it shows the page.
    void lockSize();
    void unlockSize() { lockedSize_.reset(); }

protected:
    void onAttached() override;
    Handled onMessage(const Message& message) override;

private:
    std::function<void(HWND)> onCreated_;
    SIZE ownSize_{};
    std::optional<SIZE> lockedSize_;
};

/// The dialog procedure of pages. Sets the window's id to the template's id.
INT_PTR CALLBACK pageProcedure(HWND page, UINT id, WPARAM wParam, LPARAM lParam) noexcept;

} // namespace framework
