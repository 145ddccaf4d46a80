#include "scheduler/ui/framework/modalowner.h"

namespace framework {

// Stores the focus first, because a disabled window loses it.
ModalOwner::ModalOwner(HWND owner)
    : owner_(owner), wasEnabled_(owner && IsWindowEnabled(owner)), focus_(GetFocus()) {
    if (wasEnabled_)
        EnableWindow(owner_, FALSE);
}

ModalOwner::~ModalOwner() {
    if (wasEnabled_)
        EnableWindow(owner_, TRUE);
    if (focus_)
        SetFocus(focus_);
}

} // namespace framework
