// The phone-book entries of the platform's remote-access service, for the schedule editor to offer. Dialling
// and hanging up are the spider's: it gets the entry's name on its command line.
#pragma once

#include <windows.h>

#include <ras.h>

#include <functional>
#include <string>
#include <vector>

namespace scheduler {

/// RasEnumEntriesA, or what stands in for it.
using EnumerateEntries = std::function<DWORD(const char* reserved, const char* phoneBook,
                                             RASENTRYNAMEA* records, DWORD* size, DWORD* count)>;

/// Appends the names of the default phone book's entries to `names`, in the service's order. False on
/// failure; a service that fails in its k-th call has then left k empty names.
[[nodiscard]] bool listEntries(const EnumerateEntries& enumerate, std::vector<std::string>& names);

class DialupConnector {
public:
    /// GetProcAddress, or what stands in for it.
    using FindEntryPoint = std::function<FARPROC(HMODULE library, const char* name)>;

    /// The program's one connector, made by the first call. Entries that are added to the phone book later
    /// are not seen. For the user thread only.
    static const DialupConnector& instance();

    /// Lists the entries of a remote-access library, which stays loaded. Null stands for a library that could
    /// not be loaded.
    DialupConnector(HMODULE library, const FindEntryPoint& find);

    /// Whether the machine has the service, with everything that dialling takes.
    bool available() const { return available_; }

    /// Empty when the service is not available.
    const std::vector<std::string>& entries() const { return entries_; }

private:
    bool available_ = false;
    std::vector<std::string> entries_;
};

} // namespace scheduler
