#pragma once

#include <windows.h>

namespace framework {

/// The modal result, besides IDOK and IDCANCEL, if the window could not be created.
inline constexpr int notCreated = -1;

/// Disables the owner, then re-enables it and restores the focus. A disabled owner stays disabled.
class [[nodiscard]] ModalOwner {
public:
    /// `owner` may be null.
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
