// The window that waits while another one is run modally.
#pragma once

#include <windows.h>

namespace framework {

/// The result of a modal run, beside IDOK and IDCANCEL, whose window could not be made.
inline constexpr int notMade = -1;

/// Disables the owner for as long as this object lives, and then gives the focus back to where it was. An
/// owner that waits for something else already goes on waiting for it.
class [[nodiscard]] ModalOwner {
public:
    /// No owner is null.
    explicit ModalOwner(HWND owner);
    ModalOwner(const ModalOwner&) = delete;
    ModalOwner& operator=(const ModalOwner&) = delete;
    ~ModalOwner();

private:
    HWND owner_;
    bool wasEnabled_;
    HWND focus_;
};

} // namespace framework
