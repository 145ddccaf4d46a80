#pragma once

#include <windows.h>

namespace framework {

/// A modal result besides IDOK and IDCANCEL: the window could not be created.
inline constexpr int notCreated = -1;

/// Disables the owner, if not null. The destructor restores the owner's former state and the focus.
class [[nodiscard]] ModalOwner {
public:
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
