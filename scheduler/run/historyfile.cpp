#include "scheduler/run/historyfile.h"

#include "lib/base/base.h"
#include "lib/base/files.h"
#include "lib/base/logfile.h"

#include <cstdint>
#include <exception>

namespace scheduler {

void HistoryFile::append(const std::string& line) noexcept {
    constexpr std::uint32_t maxFileSize = 1024 * 1024; // in bytes
    try {
        const std::string data = base::localDataDirectory();
        if (data.empty())
            return;
        const std::string folder = data + base::vendorName + '\\' + base::applicationName + '\\';
        static_cast<void>(base::appendLine(
            {folder + "history.txt", folder + "history.1.txt", std::string(historyHeader), maxFileSize},
            line));
    } catch (const std::exception&) {
        return;
    }
}

} // namespace scheduler
