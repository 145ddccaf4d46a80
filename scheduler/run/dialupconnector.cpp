#include "scheduler/run/dialupconnector.h"

#include "lib/base/opsys.h"

#include <array>
#include <bit>
#include <cstddef>
#include <raserror.h>

namespace scheduler {
namespace {

// The service identifies a record's version by its size. This version ends in the phone book's path.
static_assert(sizeof(RASENTRYNAMEA) == 532 && offsetof(RASENTRYNAMEA, szEntryName) == 4);

// Only the first function is called here. Dialling needs the others, so the service is useless without them.
constexpr std::array entryPointNames{
    "RasEnumEntriesA", "RasEnumConnectionsA", "RasGetConnectStatusA",   "RasHangUpA",
    "RasDialA",        "RasGetErrorStringA",  "RasGetEntryDialParamsA",
};

} // namespace

bool listEntries(const EnumerateEntries& enumerate, std::vector<std::string>& names) {
    RASENTRYNAMEA blank{};
    blank.dwSize = sizeof(blank);
    std::vector<RASENTRYNAMEA> records;
    DWORD count = 0;
    DWORD result = ERROR_SUCCESS;
    do {
        records.push_back(blank);
        auto size = static_cast<DWORD>(sizeof(blank)) * static_cast<DWORD>(records.size());
        result = enumerate(nullptr, nullptr, records.data(), &size, &count);
    } while (result == ERROR_BUFFER_TOO_SMALL);

    const bool succeeded = result == ERROR_SUCCESS && count <= records.size();
    if (succeeded)
        records.resize(count);
    // Deliberately done after a failure, too: the editor then offers these names, usually empty.
    for (const RASENTRYNAMEA& record : records)
        names.emplace_back(record.szEntryName);
    return succeeded;
}

const DialupConnector& DialupConnector::instance() {
    static const DialupConnector connector(base::loadSystemLibrary("RASAPI32.dll"), &GetProcAddress);
    return connector;
}

DialupConnector::DialupConnector(HMODULE library, const FindEntryPoint& find) {
    if (!library)
        return;
    std::array<FARPROC, entryPointNames.size()> entryPoints{};
    for (std::size_t index = 0; index < entryPoints.size(); ++index) {
        entryPoints[index] = find(library, entryPointNames[index]);
        if (!entryPoints[index])
            return;
    }
    available_ = true;
    auto* const enumerate =
        reinterpret_cast<decltype(&RasEnumEntriesA)>(reinterpret_cast<void*>(entryPoints.front()));
    static_cast<void>(listEntries(enumerate, entries_));
}

} // namespace scheduler
