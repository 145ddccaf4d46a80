// The process that tests start, and what they share with it.
#pragma once

#include "lib/base/handles.h"
#include "lib/base/opsys.h"
#include "lib/base/paths.h"

#include <windows.h>

#include <string>

namespace test {

/// The command line of the process that the tests start.
inline std::string child(const std::string& arguments) {
    return "\"" + base::directoryOf(base::executablePath()) + "startedprocess.exe\" " + arguments;
}

inline base::KernelHandle makeEvent(bool inheritable, const char* name = nullptr) {
    SECURITY_ATTRIBUTES attributes{};
    attributes.nLength = sizeof attributes;
    attributes.bInheritHandle = inheritable;
    return base::KernelHandle(CreateEventA(&attributes, TRUE, FALSE, name));
}

inline bool isSet(const base::KernelHandle& event) {
    return WaitForSingleObject(event.get(), 0) == WAIT_OBJECT_0;
}

inline std::string uniqueName(const std::string& purpose) {
    static unsigned count = 0;
    return "Brindlewood-test-" + purpose + "-" + std::to_string(GetCurrentProcessId()) + "-" +
           std::to_string(++count);
}

} // namespace test
