// Calls that change the process's current directory on the way.
#pragma once

#include <string>

namespace base {

/// While one lives, the current directory may change; at its end it is what it was, if that is still there.
class [[nodiscard]] KeptCurrentDirectory {
public:
    KeptCurrentDirectory();
    KeptCurrentDirectory(const KeptCurrentDirectory&) = delete;
    KeptCurrentDirectory& operator=(const KeptCurrentDirectory&) = delete;
    ~KeptCurrentDirectory();

private:
    std::wstring directory_; ///< whose name need not be one of the code page's; empty: unknown
};

} // namespace base
