// The description of a window class, registered when its first window is made.
#pragma once

#include <windows.h>

#include <string>

namespace framework {

class WindowClass {
public:
    /// Starts from the framework's procedure, the program's module, the arrow cursor and the window
    /// background.
    WindowClass();

    /// A class by a name of its own.
    explicit WindowClass(std::string name);

    /// The platform's record, to be changed before the first window is made. Its name is set on registration.
    WNDCLASSEXA& description() { return description_; }

    /// Registers the class, once. A refusal is ignored: an identical class may exist already.
    void registerOnce();

    /// The given name, or one made of the class's attributes, so that windows alike share one class.
    const std::string& name();

private:
    WNDCLASSEXA description_{};
    std::string name_;
    bool registered_ = false;
};

} // namespace framework
