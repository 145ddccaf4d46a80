// Simulates processes that end when `over` is set, and records their starts. For one source file per program.
#pragma once

#include "lib/base/handles.h"
#include "tests/support/importedfunctions.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace test {

struct ProcessStart {
    std::string commandLine;
    std::string directory; ///< empty for the caller's directory
    DWORD showCommand;
    BOOL inheritsHandles;

    friend bool operator==(const ProcessStart&, const ProcessStart&) = default;
};

inline struct SimulatedProcesses {
    SRWLOCK lock = SRWLOCK_INIT;
    std::vector<ProcessStart> starts;
    bool canStart = true;
    base::KernelHandle over{CreateEventA(nullptr, TRUE, FALSE, nullptr)};
} processes;

inline HANDLE anotherHandle(HANDLE handle) {
    DuplicateHandle(GetCurrentProcess(), handle, GetCurrentProcess(), &handle, 0, FALSE,
                    DUPLICATE_SAME_ACCESS);
    return handle;
}

inline BOOL WINAPI simulatedStart(LPCSTR program, LPSTR commandLine, LPSECURITY_ATTRIBUTES process,
                                  LPSECURITY_ATTRIBUTES thread, BOOL inheritsHandles, DWORD flags,
                                  LPVOID environment, LPCSTR directory, LPSTARTUPINFOA startupInfo,
                                  LPPROCESS_INFORMATION information) {
    EXPECT_TRUE(!program && !process && !thread && !environment && flags == 0);
    EXPECT_EQ(startupInfo->cb, 68U);
    EXPECT_TRUE(startupInfo->dwFlags & STARTF_USESHOWWINDOW);
    AcquireSRWLockExclusive(&processes.lock);
    processes.starts.push_back(
        {commandLine, directory ? directory : "", startupInfo->wShowWindow, inheritsHandles});
    ReleaseSRWLockExclusive(&processes.lock);
    SetLastError(ERROR_FILE_NOT_FOUND);
    if (processes.canStart)
        *information = {anotherHandle(processes.over.get()), anotherHandle(processes.over.get()), 1, 1};
    return processes.canStart;
}

} // namespace test

SCHEDULER_REPLACE_IMPORT(CreateProcessA, "_CreateProcessA@40", test::simulatedStart);
