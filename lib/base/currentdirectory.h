#pragma once

#include <string>

namespace base {

/// Restores the current directory when destroyed, if that directory still exists.
class [[nodiscard]] CurrentDirectoryGuard {
public:
    CurrentDirectoryGuard();
    CurrentDirectoryGuard(const CurrentDirectoryGuard&) = delete;
    CurrentDirectoryGuard& operator=(const CurrentDirectoryGuard&) = delete;
    ~CurrentDirectoryGuard();

private:
    std::wstring directory_;
};

} // namespace base
