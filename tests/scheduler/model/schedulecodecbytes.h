// Bytes of schedule files, for the tests of the codec.
#pragma once

#include "scheduler/model/schedulecodec.h"
#include "tests/support/filledentry.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <vector>

namespace test {

using Bytes = std::vector<std::byte>;

inline constexpr std::size_t headerSize = 8;
inline constexpr std::size_t emptyRecordSize = 82;
inline constexpr std::size_t countOffset = 4;
inline constexpr std::size_t firstPathOffset = 8;

inline Bytes bytes(std::initializer_list<int> values) {
    Bytes result;
    for (const int value : values)
        result.push_back(static_cast<std::byte>(value));
    return result;
}

inline void append(Bytes& to, const Bytes& more) {
    to.insert(to.end(), more.begin(), more.end());
}

inline void appendText(Bytes& to, const std::string& text) {
    for (const char character : text)
        to.push_back(static_cast<std::byte>(character));
}

inline void putNumber(Bytes& content, std::size_t offset, std::uint32_t value) {
    for (std::size_t i = 0; i < 4; ++i)
        content[offset + i] = static_cast<std::byte>(value >> 8 * i);
}

inline std::vector<scheduler::ScheduledProject> severalEntries() {
    std::vector<scheduler::ScheduledProject> entries(3);
    entries[0].path = "C:\\a.kra";
    entries[1] = filledEntry();
    entries[2].dialupEntry = "Line";
    return entries;
}

/// A list that already holds something, so that it shows whether a decoding touched it.
class DecodingTest : public testing::Test {
protected:
    DecodingTest() {
        scheduler::ScheduledProject entry;
        entry.path = "before";
        list.append(entry);
    }

    bool decode(const Bytes& content, std::uint32_t magic = scheduler::scheduleMagic) {
        return scheduler::decodeSchedule(content, magic, list);
    }
    std::vector<scheduler::ScheduledProject> entries() const { return {list.begin(), list.end()}; }
    bool isUntouched() const { return list.size() == 1 && list[0].path == "before"; }

    scheduler::ScheduleList list;
};

} // namespace test
