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
    if (SUCCEEDED(CoInitialize(nullptr))) // only a success must be followed by CoUninitialize
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
    // A full path, because Windows 7 without updates does not support LOAD_LIBRARY_SEARCH_SYSTEM32.
    const std::string path = folder.data() + ('\\' + name);
    return LoadLibraryExA(path.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
}

bool createInstanceMutex(const std::string& name) {
    // Never closed, on purpose.
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
    // A std::string has room for the terminating zero, too.
    GetWindowTextA(window, text.data(), length + 1);
    return text;
}

std::string systemErrorText(std::uint32_t code) {
    std::string text = std::system_category().message(static_cast<int>(code));
    trimRight(text, whitespace);
    return text;
}

} // namespace base
