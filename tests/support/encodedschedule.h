#pragma once

#include "scheduler/model/schedulecodec.h"

#include <array>
#include <cstddef>
#include <span>
#include <vector>

namespace test {

inline std::vector<std::byte> encodedSchedule(std::span<const scheduler::ScheduledProject> entries) {
    std::vector<std::byte> content;
    std::array<std::byte, 4096> buffer;
    static_cast<void>(encodeSchedule(entries, buffer, [&content](std::span<const std::byte> piece) {
        content.insert(content.end(), piece.begin(), piece.end());
        return true;
    }));
    return content;
}

} // namespace test
