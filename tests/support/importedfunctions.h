// Standing in for a function of the platform.
//
// The program calls these functions through pointers that the linker takes from the import libraries unless
// the program has its own. A test defines that pointer, under its name as the linker knows it, for the whole
// program, with a function of its own or with an object that is told the answers:
//
//     SCHEDULER_REPLACE_IMPORT(GetTickCount, "_GetTickCount@0", simulatedTickCount);
//     SCHEDULER_STAND_IN("kernel32.dll", GetFileSize, "_GetFileSize@8");
//     platform::GetFileSize.answer = INVALID_FILE_SIZE;
#pragma once

#include <windows.h>

#include <bit>
#include <optional>

#define SCHEDULER_REPLACE_IMPORT(function, linkerName, replacement)                                          \
    extern "C" {                                                                                             \
    extern decltype(&function) const replaced##function asm("__imp_" linkerName);                            \
    decltype(&function) const replaced##function = replacement;                                              \
    }                                                                                                        \
    static_assert(true)

#define SCHEDULER_STAND_IN(library, function, linkerName)                                                    \
    namespace {                                                                                              \
    namespace platform {                                                                                     \
    constinit test::StandIn<decltype(&::function)> function(library, #function);                             \
    }                                                                                                        \
    }                                                                                                        \
    SCHEDULER_REPLACE_IMPORT(function, linkerName, decltype(platform::function)::call<platform::function>)

namespace test {

/// The platform's own function, for a replacement to pass a call on.
template<class Function>
Function platformFunction(const char* library, const char* name) {
    return std::bit_cast<Function>(
        GetProcAddress(LoadLibraryExA(library, nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32), name));
}

template<class Function>
class StandIn;

/// Passes calls on to the platform, or answers in its place.
template<class Result, class... Arguments>
class StandIn<Result(WINAPI*)(Arguments...)> {
public:
    using Function = Result(WINAPI*)(Arguments...);

    constexpr StandIn(const char* library, const char* name) : library_(library), name_(name) {}

    void (*note)(Arguments...) = nullptr; ///< called first
    std::optional<Result> answer;         ///< in place of the platform's
    int callsBeforeAnswer = 0;

    template<StandIn& self>
    static Result WINAPI call(Arguments... arguments) {
        if (self.note)
            self.note(arguments...);
        if (self.answer && self.callsBeforeAnswer-- <= 0)
            return *self.answer;
        if (!self.platform_)
            self.platform_ = platformFunction<Function>(self.library_, self.name_);
        return self.platform_(arguments...);
    }

private:
    const char* library_;
    const char* name_;
    Function platform_ = nullptr;
};

} // namespace test
