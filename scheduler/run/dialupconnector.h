// Phone-book entries of the remote-access service, for the schedule editor. Only the spider dials.
#pragma once

#include <windows.h>

#include <ras.h>

#include <functional>
#include <string>
#include <vector>

namespace scheduler {

/// RasEnumEntriesA or a substitute.
using EnumerateEntries = std::function<DWORD(const char* reserved, const char* phoneBook,
                                             RASENTRYNAMEA* records, DWORD* size, DWORD* count)>;

/// Appends the default phone book's entry names to `names`, in the service's order. On failure, returns
/// false and appends the names of all records passed to the service, usually empty.
[[nodiscard]] bool listEntries(const EnumerateEntries& enumerate, std::vector<std::string>& names);

class DialupConnector {
public:
    using FindEntryPoint = std::function<FARPROC(HMODULE library, const char* name)>;

    /// Created by the first call; later phone-book changes have no effect. For the user-interface thread.
    static const DialupConnector& instance();

    /// Lists the entries now. `library`: the remote-access library; null if there is none.
    DialupConnector(HMODULE library, const FindEntryPoint& find);

    /// Whether the service exists with all functions that dialling needs.
    bool available() const { return available_; }

    const std::vector<std::string>& entries() const { return entries_; }

private:
    bool available_ = false;
    std::vector<std::string> entries_;
};

} // namespace scheduler
