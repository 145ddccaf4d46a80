// A registry key for one test, accessed independently of the program's code.
#pragma once

#include "lib/base/handles.h"

#include <windows.h>

#include <shlwapi.h>

#include <gtest/gtest.h>

#include <string>

namespace test {

/// Deleted with its last subkey.
inline constexpr char testsKey[] = "Software\\Brindlewood\\tests";

/// A unique key below HKEY_CURRENT_USER. The destructor deletes it.
class OwnKey {
public:
    OwnKey()
        : path_(testsKey + ("\\" + std::to_string(GetCurrentProcessId())) + "-" + std::to_string(++count_)) {}
    ~OwnKey() {
        SHDeleteKeyA(HKEY_CURRENT_USER, path_.c_str());
        RegDeleteKeyA(HKEY_CURRENT_USER, testsKey);
    }
    OwnKey(const OwnKey&) = delete;
    OwnKey& operator=(const OwnKey&) = delete;

    const std::string& path() const { return path_; }

private:
    static inline unsigned count_ = 0;

    std::string path_;
};

/// Adds no terminating zero to `bytes`.
inline void storeValue(HKEY root, const std::string& subkey, const char* name, DWORD type,
                       const std::string& bytes) {
    base::RegistryKey key;
    ASSERT_EQ(
        RegCreateKeyExA(root, subkey.c_str(), 0, nullptr, 0, KEY_WRITE, nullptr, key.receive(), nullptr),
        ERROR_SUCCESS);
    ASSERT_EQ(RegSetValueExA(key.get(), name, 0, type, reinterpret_cast<const BYTE*>(bytes.data()),
                             static_cast<DWORD>(bytes.size())),
              ERROR_SUCCESS);
}

struct StoredValue {
    LSTATUS status = ERROR_SUCCESS;
    DWORD type = REG_NONE;
    std::string bytes;
};

inline StoredValue loadValue(HKEY root, const std::string& subkey, const char* name) {
    StoredValue value;
    base::RegistryKey key;
    value.status = RegOpenKeyExA(root, subkey.c_str(), 0, KEY_READ, key.receive());
    if (value.status != ERROR_SUCCESS)
        return value;
    value.bytes.resize(1000);
    DWORD size = 1000;
    value.status = RegQueryValueExA(key.get(), name, nullptr, &value.type,
                                    reinterpret_cast<BYTE*>(value.bytes.data()), &size);
    value.bytes.resize(value.status == ERROR_SUCCESS ? size : 0);
    return value;
}

class RegistryTest : public testing::Test {
protected:
    std::string path(const std::string& name) const { return key_.path() + "\\" + name; }
    void storeValue(const char* name, DWORD type, const std::string& bytes) const {
        test::storeValue(HKEY_CURRENT_USER, key_.path(), name, type, bytes);
    }
    StoredValue loadValue(const char* name) const {
        return test::loadValue(HKEY_CURRENT_USER, key_.path(), name);
    }

    const OwnKey key_;
};

} // namespace test
