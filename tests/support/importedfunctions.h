// Standing in for a function of the platform.
//
// The program calls these functions through pointers that the linker takes from the import libraries unless
// the program has its own. A test defines that pointer, under its name as the linker knows it, for the whole
// program:
//
//     SCHEDULER_REPLACE_IMPORT(GetTickCount, "_GetTickCount@0", simulatedTickCount);
#pragma once

#include <windows.h>

#include <bit>

#define SCHEDULER_REPLACE_IMPORT(function, linkerName, replacement)                                          \
    extern "C" {                                                                                             \
    extern decltype(&function) const replaced##function asm("__imp_" linkerName);                            \
    decltype(&function) const replaced##function = replacement;                                              \
    }                                                                                                        \
    static_assert(true)

namespace test {

/// The platform's own function, for a replacement to pass a call on.
template<class Function>
Function platformFunction(const char* library, const char* name) {
    return std::bit_cast<Function>(
        GetProcAddress(LoadLibraryExA(library, nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32), name));
}

} // namespace test
