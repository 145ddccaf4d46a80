// Registry access. Each call opens and closes the key. `path` is a subkey, a backslash and a value name,
// split at the last backslash. A path without a backslash, or with one at the end, names the default value.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace base {

/// Reads a REG_SZ, REG_EXPAND_SZ (not expanded) or REG_MULTI_SZ (with its inner zeros), without trailing
/// zeros. False, `out` unchanged, if the value is missing, empty or of another type.
[[nodiscard]] bool readString(HKEY root, const std::string& path, std::string& out);

/// Like readString; empty on failure.
std::string getString(HKEY root, const std::string& path);

/// Reads a value of any type and at most 4 bytes. A shorter one is padded with zeros. False, `out` unchanged,
/// if the value is missing or larger.
[[nodiscard]] bool readNumber(HKEY root, const std::string& path, std::uint32_t& out);

std::uint32_t getNumber(HKEY root, const std::string& path, std::uint32_t fallback);

/// Reads a REG_BINARY of any content. Fails like readString.
[[nodiscard]] bool readBinary(HKEY root, const std::string& path, std::string& out);

// Writing creates a missing key. The type is REG_SZ, REG_DWORD or REG_BINARY.

[[nodiscard]] bool writeString(HKEY root, const std::string& path, std::string_view text);
[[nodiscard]] bool writeNumber(HKEY root, const std::string& path, std::uint32_t value);
[[nodiscard]] bool writeBinary(HKEY root, const std::string& path, std::string_view bytes);

[[nodiscard]] bool deleteValue(HKEY root, const std::string& path);

/// Deletes the subkeys and values, too. False if there is no such key.
[[nodiscard]] bool deleteKey(HKEY root, const std::string& subkey);

} // namespace base
