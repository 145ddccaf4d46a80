#pragma once

#include <windows.h>

#include <cstdint>
#include <string>

namespace base {

inline constexpr std::uint32_t processFailed = 0xFFFFFFFF;

/// Starts `commandLine` in `directory` (empty: the current one). The caller closes the handles in
/// `processInfo`. Also true if starting fails without an error code.
[[nodiscard]] bool createProcess(const std::string& commandLine, STARTUPINFOA& startupInfo,
                                 PROCESS_INFORMATION& processInfo, const std::string& directory,
                                 bool inheritHandles);

[[nodiscard]] bool startProcess(const std::string& commandLine, int showCommand,
                                const std::string& directory);

/// Starts `commandLine` with the program's standard handles and waits until it ends or `timeoutMs`
/// milliseconds have passed (INFINITE: no limit). Returns the exit code, STILL_ACTIVE (259) after a time-out,
/// or processFailed if starting or waiting failed; an exit code can equal processFailed. A failed wait leaves
/// the process's handles open. `startError` receives the error code of the start; 0 if it succeeded.
std::uint32_t runProcessAndWait(const std::string& commandLine, int showCommand, const std::string& directory,
                                std::uint32_t timeoutMs, std::uint32_t* startError = nullptr);

} // namespace base
