#pragma once

#include <windows.h>

#include <utility>

namespace base {

/// Owns one handle. `Traits` defines its type, the "none" value and how to close it.
template<class Traits>
class [[nodiscard]] UniqueHandle {
public:
    using Handle = typename Traits::Handle;

    UniqueHandle() = default;
    explicit UniqueHandle(Handle handle) : handle_(handle) {}
    UniqueHandle(UniqueHandle&& other) noexcept : handle_(other.release()) {}
    UniqueHandle& operator=(UniqueHandle&& other) noexcept {
        reset(other.release());
        return *this;
    }
    ~UniqueHandle() { reset(); }

    Handle get() const { return handle_; }
    explicit operator bool() const { return handle_ != Traits::none(); }

    [[nodiscard]] Handle release() { return std::exchange(handle_, Traits::none()); }

    void reset(Handle handle = Traits::none()) {
        const Handle old = std::exchange(handle_, handle);
        if (old != Traits::none())
            Traits::close(old);
    }

    /// For functions that return a handle through a pointer. Closes the current handle first.
    Handle* receive() {
        reset();
        return &handle_;
    }

private:
    Handle handle_ = Traits::none();
};

struct KernelHandleTraits {
    using Handle = HANDLE;
    static Handle none() { return nullptr; }
    static void close(Handle handle) { CloseHandle(handle); }
};
using KernelHandle = UniqueHandle<KernelHandleTraits>;

struct FileHandleTraits {
    using Handle = HANDLE;
    static Handle none() { return INVALID_HANDLE_VALUE; }
    static void close(Handle handle) { CloseHandle(handle); }
};
using FileHandle = UniqueHandle<FileHandleTraits>;

struct FileSearchTraits {
    using Handle = HANDLE;
    static Handle none() { return INVALID_HANDLE_VALUE; }
    static void close(Handle handle) { FindClose(handle); }
};
using FileSearch = UniqueHandle<FileSearchTraits>;

struct RegistryKeyTraits {
    using Handle = HKEY;
    static Handle none() { return nullptr; }
    static void close(Handle handle) { RegCloseKey(handle); }
};
using RegistryKey = UniqueHandle<RegistryKeyTraits>;

struct MenuTraits {
    using Handle = HMENU;
    static Handle none() { return nullptr; }
    static void close(Handle handle) { DestroyMenu(handle); }
};
using Menu = UniqueHandle<MenuTraits>;

} // namespace base
