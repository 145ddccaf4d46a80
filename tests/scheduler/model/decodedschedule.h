#pragma once

#include "scheduler/model/schedulecodec.h"
#include "tests/scheduler/model/entries.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace test {

using Bytes = std::vector<std::byte>;

inline constexpr std::size_t headerSize = 8;
inline constexpr std::size_t emptyRecordSize = 82;
inline constexpr std::size_t countOffset = 4;

inline void putNumber(Bytes& content, std::size_t offset, std::uint32_t value) {
    for (std::size_t i = 0; i < 4; ++i)
        content[offset + i] = static_cast<std::byte>(value >> 8 * i);
}

class DecodedSchedule : public testing::Test {
protected:
    bool decode(const Bytes& content, std::uint32_t magic = scheduler::scheduleMagic) {
        return scheduler::decodeSchedule(content, magic, list);
    }

    scheduler::ScheduleList list;
};

} // namespace test
