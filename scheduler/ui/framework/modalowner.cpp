#include "scheduler/ui/framework/modalowner.h"

namespace framework {

// The focus is asked for first: a window that is disabled loses it.
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
