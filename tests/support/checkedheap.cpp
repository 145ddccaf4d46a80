#include "tests/support/checkedheap.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <bit>
#include <cstdint>
#include <cstring>
#include <string_view>

extern "C" ULONG WINAPI RtlGetNtGlobalFlags();

namespace test {
namespace {

std::atomic<unsigned> damagedBlocks = 0;

/// What the runtime library allocates comes from here. The platform does not look behind small blocks of a
/// heap that grows, so this one does not; what it has no room for comes from the library's own.
class FixedHeap {
public:
    void* allocate(DWORD flags, SIZE_T size) const { return HeapAlloc(handle_, flags, size); }
    bool owns(const void* block) const {
        return std::bit_cast<std::uintptr_t>(block) - std::bit_cast<std::uintptr_t>(handle_) < room;
    }
    HANDLE handle() const { return handle_; }

private:
    static constexpr SIZE_T room = 256 << 20;
    HANDLE handle_ = HeapCreate(0, 0, room);
};

const FixedHeap& fixedHeap() {
    static const FixedHeap heap;
    return heap;
}

HANDLE ownerOf(HANDLE heap, const void* block) {
    return fixedHeap().owns(block) ? fixedHeap().handle() : heap;
}

LPVOID WINAPI allocateChecked(HANDLE heap, DWORD flags, SIZE_T size) {
    void* const block = fixedHeap().allocate(flags, size);
    return block ? block : HeapAlloc(heap, flags, size);
}

// The platform finds a damaged block only while it is in use, so each is looked at before it is given back.
BOOL WINAPI freeChecked(HANDLE heap, DWORD flags, LPVOID block) {
    const HANDLE owner = ownerOf(heap, block);
    if (block && !HeapValidate(owner, flags, block))
        ++damagedBlocks;
    return HeapFree(owner, flags, block);
}

SIZE_T WINAPI sizeChecked(HANDLE heap, DWORD flags, LPCVOID block) {
    return HeapSize(ownerOf(heap, block), flags, block);
}

LPVOID WINAPI reallocateChecked(HANDLE heap, DWORD flags, LPVOID block, SIZE_T size) {
    const HANDLE owner = ownerOf(heap, block);
    if (!HeapValidate(owner, flags, block))
        ++damagedBlocks;
    void* moved = HeapReAlloc(owner, flags, block, size);
    if (moved || owner == heap || (flags & HEAP_REALLOC_IN_PLACE_ONLY) != 0)
        return moved;
    moved = HeapAlloc(heap, flags, size);
    if (moved) {
        std::memcpy(moved, block, std::min(size, HeapSize(owner, flags, block)));
        HeapFree(owner, flags, block);
    }
    return moved;
}

template<class Type>
Type* inModule(HMODULE module, DWORD offset) {
    return std::bit_cast<Type*>(std::bit_cast<std::uintptr_t>(module) + offset);
}

/// Has a library call another function instead of one that it imports. False when it does not import it.
bool replaceImport(HMODULE library, std::string_view name, std::uintptr_t replacement) {
    const auto* const dos = inModule<IMAGE_DOS_HEADER>(library, 0);
    const auto* const headers = inModule<IMAGE_NT_HEADERS>(library, static_cast<DWORD>(dos->e_lfanew));
    const DWORD imports = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
    for (const auto* from = inModule<IMAGE_IMPORT_DESCRIPTOR>(library, imports); from->Name != 0; ++from) {
        const auto* function = inModule<IMAGE_THUNK_DATA>(library, from->OriginalFirstThunk);
        auto* address = inModule<IMAGE_THUNK_DATA>(library, from->FirstThunk);
        for (; function->u1.AddressOfData != 0; ++function, ++address) {
            if (IMAGE_SNAP_BY_ORDINAL(function->u1.Ordinal) ||
                name != inModule<IMAGE_IMPORT_BY_NAME>(library, function->u1.AddressOfData)->Name)
                continue;
            DWORD protection = 0;
            VirtualProtect(address, sizeof *address, PAGE_READWRITE, &protection);
            address->u1.Function = static_cast<DWORD>(replacement);
            VirtualProtect(address, sizeof *address, protection, &protection);
            return true;
        }
    }
    return false;
}

} // namespace

bool heapIsChecked() {
    constexpr ULONG tailsAndFreedBlocks = 0x30;
    return (RtlGetNtGlobalFlags() & tailsAndFreedBlocks) == tailsAndFreedBlocks;
}

bool watchHeap() {
    const HMODULE runtime = GetModuleHandleA("msvcrt.dll");
    // Made before it is asked for a block: what guards the making allocates itself.
    return heapIsChecked() && fixedHeap().handle() &&
           replaceImport(runtime, "HeapFree", std::bit_cast<std::uintptr_t>(&freeChecked)) &&
           replaceImport(runtime, "HeapSize", std::bit_cast<std::uintptr_t>(&sizeChecked)) &&
           replaceImport(runtime, "HeapReAlloc", std::bit_cast<std::uintptr_t>(&reallocateChecked)) &&
           replaceImport(runtime, "HeapAlloc", std::bit_cast<std::uintptr_t>(&allocateChecked));
}

unsigned damagedHeaps() {
    std::array<HANDLE, 64> heaps{};
    const DWORD count = GetProcessHeaps(static_cast<DWORD>(heaps.size()), heaps.data());
    unsigned damaged = 0;
    for (DWORD i = 0; i < count && i < heaps.size(); ++i)
        damaged += HeapValidate(heaps[i], 0, nullptr) ? 0U : 1U;
    return damaged;
}

unsigned takeDamagedBlocks() {
    return damagedBlocks.exchange(0);
}

} // namespace test
