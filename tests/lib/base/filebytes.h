#pragma once

#include "lib/base/files.h"
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

/// False when opening, writing or closing fails.
inline bool writeWhole(const std::string& path, std::string_view content) {
    base::OutputFile file(path);
    const bool written = file.write(bytesOf(content));
    return file.close() && written;
}

inline base::FileHandle openFile(const std::string& path, DWORD access, DWORD sharing) {
    return base::FileHandle(
        CreateFileA(path.c_str(), access, sharing, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
}

/// Deletes the file. False if an open handle prevents that.
inline bool isFree(const std::string& path) {
    return DeleteFileA(path.c_str());
}

} // namespace test
