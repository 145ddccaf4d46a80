// Replaces a platform function in a whole test program. The replacement is a function, or an object that can
// return a preset answer. The macros define the import pointer that the linker otherwise takes from an import
// library. Examples:
//
//     SCHEDULER_REPLACE_IMPORT(GetTickCount, "_GetTickCount@0", simulatedTickCount);
//     SCHEDULER_STAND_IN("kernel32.dll", GetFileSize, "_GetFileSize@8");
//     platform::GetFileSize.answer = INVALID_FILE_SIZE;
#pragma once

#include <windows.h>

#include <atomic>
#include <bit>
#include <optional>
#include <type_traits>

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

/// The original function, for replacements that forward calls.
template<class Function>
Function platformFunction(const char* library, const char* name) {
    return std::bit_cast<Function>(
        GetProcAddress(LoadLibraryExA(library, nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32), name));
}

template<class Function, class Result, class... Arguments>
class Answers {
public:
    constexpr Answers(const char* library, const char* name) : library_(library), name_(name) {}

    std::atomic<int> calls = 0;
    void (*onCall)(Arguments...) = nullptr; ///< called first
    /// If set, the next `callsBeforeAnswer` calls go to the platform, and all later ones return this.
    std::optional<std::conditional_t<std::is_void_v<Result>, bool, Result>> answer;
    int callsBeforeAnswer = 0;

protected:
    Result to(Arguments... arguments) {
        ++calls;
        if (onCall)
            onCall(arguments...);
        if (answer && callsBeforeAnswer-- <= 0)
            return static_cast<Result>(*answer);
        if (!platform_)
            platform_ = platformFunction<Function>(library_, name_);
        return platform_.load()(arguments...);
    }

private:
    const char* library_;
    const char* name_;
    std::atomic<Function> platform_ = nullptr;
};

/// Forwards calls to the platform or returns `answer`.
template<class Function>
class StandIn;

template<class Result, class... Arguments>
class StandIn<Result(WINAPI*)(Arguments...)>
    : public Answers<Result(WINAPI*)(Arguments...), Result, Arguments...> {
public:
    using StandIn::Answers::Answers;
    template<StandIn& self>
    static Result WINAPI call(Arguments... arguments) {
        return self.to(arguments...);
    }
};

template<class Result, class... Arguments>
class StandIn<Result (*)(Arguments...)> : public Answers<Result (*)(Arguments...), Result, Arguments...> {
public:
    using StandIn::Answers::Answers;
    template<StandIn& self>
    static Result call(Arguments... arguments) {
        return self.to(arguments...);
    }
};

} // namespace test
