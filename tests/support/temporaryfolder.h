#pragma once

#include <windows.h>

#include <filesystem>
#include <string>
#include <system_error>

namespace test {

/// An empty folder. The destructor deletes it.
class TemporaryFolder {
public:
    TemporaryFolder() {
        static unsigned count = 0;
        char temporary[MAX_PATH + 1] = {};
        GetTempPathA(sizeof temporary, temporary);
        path_ = std::string(temporary) + "scheduler-test-" + std::to_string(GetCurrentProcessId()) + "-" +
                std::to_string(++count) + "\\";
        CreateDirectoryA(path_.c_str(), nullptr);
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    /// With a trailing backslash.
    const std::string& path() const { return path_; }
    std::string file(const std::string& name) const { return path_ + name; }

private:
    std::string path_;
};

} // namespace test
