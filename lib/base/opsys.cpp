#include "lib/base/opsys.h"

#include "lib/base/base.h"
#include "lib/base/formatting.h"
#include "lib/base/sourceregistration.h"
#include "lib/base/strings.h"

#include <windows.h>

#include <objbase.h>

#include <array>
#include <cstdlib>
#include <exception>
#include <system_error>

namespace base {
namespace {

[[maybe_unused]] const bool registered = registerSourceFile(__FILE__, RELEASE_DATE);

} // namespace

void startComponentLibrary() {
    if (SUCCEEDED(CoInitialize(nullptr))) // closing what was not opened is an error
        std::atexit([] { CoUninitialize(); });
}

HINSTANCE moduleHandle() {
    static const HINSTANCE module = GetModuleHandleA(nullptr);
    return module;
}

std::string executablePath() {
    std::string path(MAX_PATH, '\0');
    for (;;) {
        const DWORD length = GetModuleFileNameA(nullptr, path.data(), static_cast<DWORD>(path.size()));
        if (length < path.size()) {
            path.resize(length);
            return path;
        }
        path.resize(path.size() * 2);
    }
}

HMODULE loadSystemLibrary(const std::string& name) {
    std::array<char, MAX_PATH> folder{};
    const UINT length = GetSystemDirectoryA(folder.data(), static_cast<UINT>(folder.size()));
    if (length == 0 || length >= folder.size())
        return nullptr;
    // By its full path: the flag that stands for the system's folder alone is not known to a Windows 7
    // without its updates.
    const std::string path = folder.data() + ('\\' + name);
    return LoadLibraryExA(path.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
}

bool createInstanceMutex(const std::string& name) {
    // Never closed: the mutex stands for this process and ends with it.
    return CreateMutexA(nullptr, TRUE, name.c_str()) && GetLastError() == ERROR_ALREADY_EXISTS;
}

bool isAnotherInstanceRunning() {
    return createInstanceMutex(format("%s %s", vendorName, applicationName));
}

std::string windowText(HWND window) {
    const int length = GetWindowTextLengthA(window);
    if (length <= 0)
        return {};
    std::string text;
    try {
        text.resize(static_cast<std::size_t>(length));
    } catch (const std::exception&) {
        return {};
    }
    // The string's own terminating zero is the room for the platform's.
    GetWindowTextA(window, text.data(), length + 1);
    return text;
}

std::string systemErrorText(std::uint32_t code) {
    std::string text = std::system_category().message(static_cast<int>(code));
    trimRight(text, whitespace);
    return text;
}

} // namespace base
