// Contents and handles of files, for the tests of files.
#pragma once

#include "lib/base/files.h"
#include "lib/base/handles.h"

#include <windows.h>

#include <cstddef>
#include <cstdio>
#include <io.h>
#include <span>
#include <string>
#include <string_view>

namespace test {

inline std::span<const std::byte> bytesOf(std::string_view text) {
    return std::as_bytes(std::span(text.data(), text.size()));
}

/// Opens the file, writes the content and closes it again. False when any of them failed.
inline bool writeWhole(const std::string& path, std::string_view content) {
    base::WrittenFile file(path);
    const bool written = file.write(bytesOf(content));
    return file.close() && written;
}

/// The descriptor of the file that is opened next: the lowest that is free.
inline int nextDescriptor() {
    const int descriptor = _dup(_fileno(stderr));
    _close(descriptor);
    return descriptor;
}

inline HANDLE handleOf(int descriptor) {
    return reinterpret_cast<HANDLE>(_get_osfhandle(descriptor));
}

inline std::string_view textOf(std::span<const std::byte> bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

inline base::FileHandle openFile(const std::string& path, DWORD access, DWORD sharing) {
    return base::FileHandle(
        CreateFileA(path.c_str(), access, sharing, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
}

} // namespace test
