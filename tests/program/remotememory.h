// Memory in another process: for the messages that hand a structure to a control of that process.
#pragma once

#include "lib/base/handles.h"

#include <windows.h>

#include <cstddef>

namespace driver {

/// A block in the process of a window. Freed on destruction.
class RemoteMemory {
public:
    RemoteMemory(HWND window, std::size_t size) {
        DWORD id = 0;
        GetWindowThreadProcessId(window, &id);
        process_.reset(OpenProcess(PROCESS_VM_OPERATION | PROCESS_VM_READ | PROCESS_VM_WRITE, FALSE, id));
        address_ =
            static_cast<char*>(VirtualAllocEx(process_.get(), nullptr, size, MEM_COMMIT, PAGE_READWRITE));
    }
    ~RemoteMemory() { VirtualFreeEx(process_.get(), address_, 0, MEM_RELEASE); }
    RemoteMemory(const RemoteMemory&) = delete;
    RemoteMemory& operator=(const RemoteMemory&) = delete;

    /// Where the block lies in the other process.
    char* address() const { return address_; }

    bool write(const void* data, std::size_t size, std::size_t offset = 0) const {
        return WriteProcessMemory(process_.get(), address_ + offset, data, size, nullptr) != 0;
    }
    bool read(void* data, std::size_t size, std::size_t offset = 0) const {
        return ReadProcessMemory(process_.get(), address_ + offset, data, size, nullptr) != 0;
    }

private:
    base::KernelHandle process_;
    char* address_ = nullptr;
};

} // namespace driver
