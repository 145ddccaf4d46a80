#include "tests/scheduler/model/systemcalls.h"

#include "lib/base/stackalignment.h"

#include <windows.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string_view>

namespace test {
namespace {

unsigned callsLeft = 0; ///< calls until the process ends; 0 for no limit

extern "C" CALLED_BY_PLATFORM void countSystemCall() {
    if (callsLeft != 0 && --callsLeft == 0)
        TerminateProcess(GetCurrentProcess(), 1);
}

/// Machine code that calls countSystemCall, restores all registers and continues with the system call.
class Detour {
public:
    explicit Detour(void* const& systemCall) : original_(systemCall) {
        const std::uintptr_t end = reinterpret_cast<std::uintptr_t>(call_ + sizeof call_);
        const std::uintptr_t distance = reinterpret_cast<std::uintptr_t>(&countSystemCall) - end;
        std::memcpy(call_ + 1, &distance, sizeof distance);
        void* const target = &original_;
        std::memcpy(jump_ + 2, &target, sizeof target);
    }

private:
    unsigned char save_[2] = {0x9C, 0x60};    // pushfd, pushad
    unsigned char call_[5] = {0xE8};          // call
    unsigned char restore_[2] = {0x61, 0x9D}; // popad, popfd
    unsigned char jump_[6] = {0xFF, 0x25};    // jmp [original_]
    void* original_;
};

template<class Type>
Type* at(HMODULE module, DWORD offset) {
    return reinterpret_cast<Type*>(reinterpret_cast<char*>(module) + offset);
}

const IMAGE_IMPORT_DESCRIPTOR* importsOf(HMODULE module) {
    const auto* const head =
        at<IMAGE_NT_HEADERS>(module, static_cast<DWORD>(at<IMAGE_DOS_HEADER>(module, 0)->e_lfanew));
    const IMAGE_DATA_DIRECTORY& table = head->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    return at<IMAGE_IMPORT_DESCRIPTOR>(module, table.VirtualAddress);
}

bool isSystemCall(HMODULE module, const IMAGE_THUNK_DATA& name) {
    return !IMAGE_SNAP_BY_ORDINAL(name.u1.Ordinal) &&
           std::string_view(at<IMAGE_IMPORT_BY_NAME>(module, name.u1.AddressOfData)->Name).starts_with("Nt");
}

/// Redirects all functions named "Nt..." that the module imports from ntdll.dll.
void detourSystemCalls(HMODULE module) {
    for (const auto* from = importsOf(module); from->Name != 0; ++from) {
        if (lstrcmpiA(at<char>(module, from->Name), "ntdll.dll") != 0)
            continue;
        const auto* name = at<IMAGE_THUNK_DATA>(module, from->OriginalFirstThunk);
        auto* address = at<void*>(module, from->FirstThunk);
        for (; name->u1.AddressOfData != 0; ++name, ++address) {
            if (!isSystemCall(module, *name))
                continue;
            void* const code =
                VirtualAlloc(nullptr, sizeof(Detour), MEM_COMMIT | MEM_RESERVE, PAGE_EXECUTE_READWRITE);
            DWORD protection = 0;
            if (!code || !VirtualProtect(address, sizeof *address, PAGE_READWRITE, &protection))
                std::abort();
            *address = new (code) Detour(*address);
            VirtualProtect(address, sizeof *address, protection, &protection);
        }
    }
}

} // namespace

void endAtSystemCall(unsigned number) {
    // The C runtime and the program call the system through these two libraries.
    for (const char* const name : {"kernelbase.dll", "kernel32.dll"})
        detourSystemCalls(GetModuleHandleA(name));
    callsLeft = number;
}

} // namespace test
