#pragma once

#include <string>

namespace base {

/// Restores the current directory when destroyed, if that directory still exists.
class [[nodiscard]] KeptCurrentDirectory {
public:
    KeptCurrentDirectory();
    KeptCurrentDirectory(const KeptCurrentDirectory&) = delete;
    KeptCurrentDirectory& operator=(const KeptCurrentDirectory&) = delete;
    ~KeptCurrentDirectory();

private:
    std::wstring directory_; ///< wide: the name need not fit the code page; empty: unknown
};

} // namespace base
