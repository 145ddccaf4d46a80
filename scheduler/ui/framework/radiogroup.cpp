#include "scheduler/ui/framework/radiogroup.h"

namespace framework {

RadioGroup::RadioGroup(ControlHost& host, std::vector<int> ids, Binding binding)
    : BoundControl(std::move(binding), host, ids.front()), ids_(std::move(ids)) {}

HWND RadioGroup::button(int id) const {
    return GetDlgItem(GetParent(handle()), id);
}

std::int32_t RadioGroup::value() const {
    for (std::size_t index = 0; index < ids_.size(); ++index)
        if (SendMessageA(button(ids_[index]), BM_GETCHECK, 0, 0) == BST_CHECKED)
            return static_cast<std::int32_t>(index);
    return noButton;
}

void RadioGroup::setValue(const std::int32_t& value) {
    std::int32_t index = 0;
    for (const int id : ids_)
        SendMessageA(button(id), BM_SETCHECK, index++ == value ? BST_CHECKED : BST_UNCHECKED, 0);
}

void RadioGroup::keepTabStop() {
    HWND stop = nullptr;
    for (const int id : ids_) {
        const bool isChecked = SendMessageA(button(id), BM_GETCHECK, 0, 0) == BST_CHECKED;
        if (IsWindowEnabled(button(id)) && (isChecked || !stop))
            stop = button(id);
    }
    for (const int id : ids_) {
        const LONG style = GetWindowLongA(button(id), GWL_STYLE);
        const LONG wanted = button(id) == stop ? style | WS_TABSTOP : style & ~WS_TABSTOP;
        if (wanted != style)
            SetWindowLongA(button(id), GWL_STYLE, wanted);
    }
}

} // namespace framework
