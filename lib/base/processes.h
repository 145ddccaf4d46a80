// Starting other programs, with and without waiting for their end.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string>

namespace base {

/// What runProcessAndWait gives when the process could not be started or waited for.
inline constexpr std::uint32_t processFailed = 0xFFFFFFFF;

/// Starts `commandLine` in `directory` (empty: the caller's own). The process information's handles are the
/// caller's to close. On failure the platform's last error decides: true when it is 0, else false.
[[nodiscard]] bool createProcess(const std::string& commandLine, STARTUPINFOA& startupInfo,
                                 PROCESS_INFORMATION& processInfo, const std::string& directory,
                                 bool inheritHandles);

/// Starts `commandLine` without waiting for it. `showCommand` is one of the platform's SW_ values.
[[nodiscard]] bool startProcess(const std::string& commandLine, int showCommand,
                                const std::string& directory);

/// Starts `commandLine` with the program's standard handles and blocks the calling thread until it ends or
/// `timeoutMs` milliseconds have passed (INFINITE: no limit). The exit code, STILL_ACTIVE (259) after a
/// time-out, or processFailed, which a process may also return itself. Leaves no handle open unless the
/// waiting itself fails. `startError`, if given, receives the platform's error code when the process could
/// not be started, else 0.
std::uint32_t runProcessAndWait(const std::string& commandLine, int showCommand, const std::string& directory,
                                std::uint32_t timeoutMs, std::uint32_t* startError = nullptr);

} // namespace base
