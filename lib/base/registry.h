// The registry, one value or key at a time: each call opens the key, does one thing and closes it.
//
// A value is addressed by a root key and one path of subkey, backslash and value name, split at the last
// backslash. A path without a backslash, or one that ends in it, names the key's default value.
// Failures are told by the result only.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace base {

/// Reads a REG_SZ, REG_EXPAND_SZ (not expanded) or REG_MULTI_SZ (with its inner zeros), without trailing
/// zeros. False, `out` untouched, when the value is missing, empty or of another type.
[[nodiscard]] bool readString(HKEY root, const std::string& path, std::string& out);

/// As readString, into a fresh string; empty when that fails.
std::string getString(HKEY root, const std::string& path);

/// Reads a value of at most 4 bytes, whatever its type, as a number; bytes that are not there count as 0.
/// False, `out` untouched, when it is missing or larger.
[[nodiscard]] bool readNumber(HKEY root, const std::string& path, std::uint32_t& out);

/// As readNumber; `fallback` when that fails.
std::uint32_t getNumber(HKEY root, const std::string& path, std::uint32_t fallback);

/// Reads a REG_BINARY value. False, `out` untouched, when it is missing, empty or of another type.
[[nodiscard]] bool readBinary(HKEY root, const std::string& path, std::string& out);

// The writes make the key when it is not there.

/// Writes a REG_SZ of the text's own length, without a terminating zero.
[[nodiscard]] bool writeString(HKEY root, const std::string& path, std::string_view text);
[[nodiscard]] bool writeNumber(HKEY root, const std::string& path, std::uint32_t value);
[[nodiscard]] bool writeBinary(HKEY root, const std::string& path, std::string_view bytes);

[[nodiscard]] bool deleteValue(HKEY root, const std::string& path);

/// Deletes a key with all its subkeys and values. False when there was none.
[[nodiscard]] bool deleteKey(HKEY root, const std::string& subkey);

} // namespace base
