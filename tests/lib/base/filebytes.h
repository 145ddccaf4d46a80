// Contents and handles of files, for the tests of files.
#pragma once

#include "lib/base/handles.h"

#include <windows.h>

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace test {

inline std::span<const std::byte> bytesOf(std::string_view text) {
    return std::as_bytes(std::span(text.data(), text.size()));
}

inline std::string_view textOf(std::span<const std::byte> bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

inline base::FileHandle openFile(const std::string& path, DWORD access, DWORD sharing) {
    return base::FileHandle(
        CreateFileA(path.c_str(), access, sharing, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
}

} // namespace test
