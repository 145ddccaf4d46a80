// The clock of the machine that tools/wine --settable makes up, set while programs run.
#pragma once

#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>

namespace driver {

class SettableClock {
public:
    SettableClock() {
        const char* const path = std::getenv("SCHEDULER_CLOCK");
        path_ = path ? path : "";
        std::ifstream(path_) >> offset_;
    }

    bool isThere() const { return !path_.empty(); }

    /// Sets the clock so many seconds forwards, or backwards.
    void moveBy(long long seconds) {
        offset_ += seconds;
        char text[16]{};
        const int length = std::snprintf(text, sizeof(text), "%+011lld\n", offset_);
        // Written over, in one piece: nobody must find the file empty.
        std::FILE* const file = std::fopen(path_.c_str(), "r+b");
        std::fwrite(text, 1, static_cast<std::size_t>(length), file);
        std::fclose(file);
    }

private:
    std::string path_;
    long long offset_ = 0;
};

} // namespace driver
