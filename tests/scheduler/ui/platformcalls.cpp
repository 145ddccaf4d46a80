#include "tests/scheduler/ui/platformcalls.h"

#include "lib/base/threads.h"

#include <process.h>

#include <cstdint>
#include <ctime>

namespace {

std::uintptr_t beginThread(void(__cdecl* run)(void*), unsigned stackSize, void* parameter) {
    static const auto original =
        test::platformFunction<decltype(&_beginthread)>("msvcrt.dll", "_beginthread");
    if (!test::startThread)
        return original(run, stackSize, parameter);
    return test::startThread() ? 1 : base::threadFailed;
}

__time32_t timeNow(__time32_t*) {
    static const auto original = test::platformFunction<decltype(&_time32)>("msvcrt.dll", "_time32");
    return test::currentTime ? test::currentTime().seconds() : original(nullptr);
}

} // namespace

#define SCHEDULER_WATCHED_CALL(library, function, bytes)                                                     \
    SCHEDULER_REPLACE_IMPORT(function, "_" #function "@" #bytes, test::function##Call::make);
SCHEDULER_WATCHED_CALLS(SCHEDULER_WATCHED_CALL)
SCHEDULER_REPLACE_IMPORT(_beginthread, "__beginthread", beginThread);
SCHEDULER_REPLACE_IMPORT(_time32, "__time32", timeNow);
