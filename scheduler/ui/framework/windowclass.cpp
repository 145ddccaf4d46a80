#include "scheduler/ui/framework/windowclass.h"

#include "lib/base/formatting.h"
#include "lib/base/opsys.h"
#include "scheduler/ui/framework/window.h"

#include <utility>

namespace framework {
namespace {

std::string decimal(const void* handle) {
    return std::to_string(reinterpret_cast<ULONG_PTR>(handle));
}

} // namespace

WindowClass::WindowClass() : WindowClass(std::string()) {}

WindowClass::WindowClass(std::string name) : name_(std::move(name)) {
    description_.cbSize = sizeof(description_);
    description_.lpfnWndProc = &windowProcedure;
    description_.hInstance = base::moduleHandle();
    description_.hCursor = LoadCursorA(nullptr, IDC_ARROW);
    description_.hbrBackground = GetSysColorBrush(COLOR_WINDOW);
}

const std::string& WindowClass::name() {
    if (name_.empty())
        name_ =
            base::format("gen:%s:%s:%s:%s", std::to_string(description_.style), decimal(description_.hCursor),
                         decimal(description_.hbrBackground), decimal(description_.lpszMenuName));
    return name_;
}

void WindowClass::registerOnce() {
    if (registered_)
        return;
    description_.lpszClassName = name().c_str();
    registered_ = RegisterClassExA(&description_) != 0;
}

} // namespace framework
