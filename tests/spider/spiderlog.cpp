#include "tests/spider/spiderlog.h"

#include "lib/base/dates.h"
#include "lib/base/formatting.h"
#include "lib/base/handles.h"
#include "lib/base/opsys.h"
#include "lib/base/paths.h"

#include <windows.h>

#include <array>
#include <cstdlib>

namespace spider {

namespace {

// One spider writes at a time: under Wine, lines appended at the same moment overwrite each other.
class LogTurn {
public:
    LogTurn() : mutex_(CreateMutexA(nullptr, FALSE, "Corvane sample spider's log")) {
        if (mutex_)
            WaitForSingleObject(mutex_.get(), INFINITE);
    }
    ~LogTurn() {
        if (mutex_)
            ReleaseMutex(mutex_.get());
    }
    LogTurn(const LogTurn&) = delete;
    LogTurn& operator=(const LogTurn&) = delete;

private:
    base::KernelHandle mutex_;
};

} // namespace

std::string logPath() {
    std::array<char, MAX_PATH + 1> buffer{};
    const DWORD length = GetEnvironmentVariableA("SCHEDULER_SPIDER_LOG", buffer.data(), buffer.size());
    if (length > 0 && length < buffer.size())
        return std::string(buffer.data(), length);
    return base::directoryOf(base::executablePath()) + "spider.log";
}

bool appendToLog(const std::string& path, const std::string& event, std::optional<std::uint32_t> runNumber,
                 const std::string& detail) {
    const std::string number = runNumber ? std::to_string(*runNumber) : "-";
    const std::string line = base::formatPattern(base::TimeValue::now(), "%Y-%m-%d %H:%M:%S ") + event +
                             " run " + number + ": " + detail + "\r\n";

    const LogTurn turn;
    const base::FileHandle file(CreateFileA(path.c_str(), FILE_APPEND_DATA,
                                            FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_ALWAYS,
                                            FILE_ATTRIBUTE_NORMAL, nullptr));
    DWORD written = 0;
    return file && WriteFile(file.get(), line.data(), static_cast<DWORD>(line.size()), &written, nullptr) &&
           written == line.size();
}

} // namespace spider
