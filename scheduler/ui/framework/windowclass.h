// A window class, registered when its first window is created.
#pragma once

#include <windows.h>

#include <string>

namespace framework {

class WindowClass {
public:
    /// Starts with the framework's procedure, the program's module, the arrow cursor and a window background.
    WindowClass();

    explicit WindowClass(std::string name);

    /// Change it only before the first window is created. Registration sets the class name.
    WNDCLASSEXA& description() { return description_; }

    /// Ignores errors: an identical class may exist already.
    void registerOnce();

    /// The given name, or one made from the attributes: windows with the same attributes then share a class.
    const std::string& name();

private:
    WNDCLASSEXA description_{};
    std::string name_;
    bool registered_ = false;
};

} // namespace framework
