#include "lib/base/registry.h"

#include "lib/base/handles.h"
#include "lib/base/sourceregistration.h"
#include "lib/base/strings.h"

#include <windows.h>

#include <shlwapi.h>

#include <algorithm>
#include <exception>
#include <initializer_list>

namespace base {
namespace {

[[maybe_unused]] const bool registered = registerSourceFile(__FILE__, RELEASE_DATE);

struct ValueAddress {
    std::string subkey;
    std::string name; ///< empty: the key's default value

    explicit ValueAddress(const std::string& path)
        : subkey(path, 0, path.rfind('\\')),
          name(subkey.size() < path.size() ? path.substr(subkey.size() + 1) : std::string()) {}
};

RegistryKey openKey(HKEY root, const std::string& subkey, REGSAM access) {
    RegistryKey key;
    if (RegOpenKeyExA(root, subkey.c_str(), 0, access, key.receive()) != ERROR_SUCCESS)
        return {};
    return key;
}

/// Reads a non-empty value of one of `types`. Leaves `out` unchanged on failure.
bool readBytes(HKEY root, const std::string& path, std::initializer_list<DWORD> types, std::string& out) {
    const ValueAddress address(path);
    const RegistryKey key = openKey(root, address.subkey, KEY_QUERY_VALUE);
    if (!key)
        return false;
    DWORD type = REG_NONE;
    DWORD size = 0;
    if (RegQueryValueExA(key.get(), address.name.c_str(), nullptr, &type, nullptr, &size) != ERROR_SUCCESS)
        return false;
    if (size == 0 || std::find(types.begin(), types.end(), type) == types.end())
        return false;
    std::string bytes;
    try {
        bytes.resize(size);
    } catch (const std::exception&) {
        return false;
    }
    if (RegQueryValueExA(key.get(), address.name.c_str(), nullptr, nullptr,
                         reinterpret_cast<BYTE*>(bytes.data()), &size) != ERROR_SUCCESS)
        return false;
    bytes.resize(size); // for a text, the first size was only an upper bound
    out = std::move(bytes);
    return true;
}

bool writeValue(HKEY root, const std::string& path, DWORD type, const void* data, std::size_t size) {
    const ValueAddress address(path);
    // The class name has no effect. Existing keys have this one.
    char keyClass[] = "REG_SZ";
    RegistryKey key;
    if (RegCreateKeyExA(root, address.subkey.c_str(), 0, keyClass, REG_OPTION_NON_VOLATILE,
                        KEY_READ | KEY_WRITE, nullptr, key.receive(), nullptr) != ERROR_SUCCESS)
        return false;
    return RegSetValueExA(key.get(), address.name.c_str(), 0, type, static_cast<const BYTE*>(data),
                          static_cast<DWORD>(size)) == ERROR_SUCCESS;
}

} // namespace

bool readString(HKEY root, const std::string& path, std::string& out) {
    if (!readBytes(root, path, {REG_SZ, REG_EXPAND_SZ, REG_MULTI_SZ}, out))
        return false;
    trimRight(out, std::string_view("\0", 1));
    return true;
}

std::string getString(HKEY root, const std::string& path) {
    std::string text;
    static_cast<void>(readString(root, path, text));
    return text;
}

bool readNumber(HKEY root, const std::string& path, std::uint32_t& out) {
    const ValueAddress address(path);
    const RegistryKey key = openKey(root, address.subkey, KEY_QUERY_VALUE);
    std::uint32_t value = 0;
    DWORD size = sizeof value;
    if (!key || RegQueryValueExA(key.get(), address.name.c_str(), nullptr, nullptr,
                                 reinterpret_cast<BYTE*>(&value), &size) != ERROR_SUCCESS)
        return false;
    out = value;
    return true;
}

std::uint32_t getNumber(HKEY root, const std::string& path, std::uint32_t fallback) {
    std::uint32_t value = fallback;
    static_cast<void>(readNumber(root, path, value));
    return value;
}

bool readBinary(HKEY root, const std::string& path, std::string& out) {
    return readBytes(root, path, {REG_BINARY}, out);
}

bool writeString(HKEY root, const std::string& path, std::string_view text) {
    // The platform looks for a terminating zero after the text and stores it, too. A view may have none.
    const std::string terminated(text);
    return writeValue(root, path, REG_SZ, terminated.c_str(), terminated.size());
}

bool writeNumber(HKEY root, const std::string& path, std::uint32_t value) {
    return writeValue(root, path, REG_DWORD, &value, sizeof value);
}

bool writeBinary(HKEY root, const std::string& path, std::string_view bytes) {
    return writeValue(root, path, REG_BINARY, bytes.data(), bytes.size());
}

bool deleteValue(HKEY root, const std::string& path) {
    const ValueAddress address(path);
    const RegistryKey key = openKey(root, address.subkey, KEY_SET_VALUE);
    return key && RegDeleteValueA(key.get(), address.name.c_str()) == ERROR_SUCCESS;
}

bool deleteKey(HKEY root, const std::string& subkey) {
    // The status is signed, although the header declares it unsigned. Negative values are not failures.
    return static_cast<LSTATUS>(SHDeleteKeyA(root, subkey.c_str())) <= ERROR_SUCCESS;
}

} // namespace base
