#pragma once

#include "lib/base/dates.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <stdexcept>
#include <string>

namespace driver {

/// Sets the simulated clock of tools/wine --settable while programs run.
class SettableClock {
public:
    SettableClock() {
        const char* const path = std::getenv("SCHEDULER_CLOCK");
        if (!path)
            throw std::runtime_error("SCHEDULER_CLOCK is not set: run this test with tools/wine --settable");
        path_ = path;
        std::ifstream(path_) >> offset_;
    }

    /// A negative number sets the clock back.
    void moveBy(long long seconds) {
        offset_ += seconds;
        char text[16]{};
        const int length = std::snprintf(text, sizeof(text), "%+011lld\n", offset_);
        // One write, because a program may read the file at any time.
        std::FILE* const file = std::fopen(path_.c_str(), "r+b");
        std::fwrite(text, 1, static_cast<std::size_t>(length), file);
        std::fclose(file);
    }
    void moveTo(base::TimeValue time) {
        moveBy(static_cast<long long>(time.seconds()) - base::TimeValue::now().seconds());
    }

private:
    std::string path_;
    long long offset_ = 0;
};

} // namespace driver
