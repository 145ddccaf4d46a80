#include "scheduler/model/schedulecodec.h"

#include "tests/fuzz/fuzzing.h"
#include "tests/support/allocations.h"
#include "tests/support/encodedschedule.h"
#include "tests/support/plainentries.h"
#include "tests/support/plainschedule.h"

#include <cstring>

using fuzzing::require;
using scheduler::ScheduleList;

namespace {

/// An upper bound for decoding: the entry array, its reallocation at twice the size, and the texts.
std::size_t memoryFor(std::size_t contentSize) {
    return (contentSize / 82 + 1) * 3 * sizeof(scheduler::ScheduledProject) + 2 * contentSize + 3 * 64;
}

void checkEntries(const ScheduleList& list, const std::vector<plain::Item>& items) {
    require(list.size() == items.size(), "the list has an entry for each record");
    for (std::size_t i = 0; i < items.size(); ++i)
        require(plain::itemOf(list[i]) == items[i], "an entry has the values of its record");
}

void checkRoundTrip(const ScheduleList& list, std::span<const std::byte> content) {
    const std::vector<std::byte> written = test::encodedSchedule(list.entries());
    require(written.size() <= content.size() &&
                std::memcmp(written.data(), content.data(), written.size()) == 0,
            "encoding restores the decoded bytes");
    ScheduleList again;
    require(decodeSchedule(written, scheduler::scheduleMagic, again), "the encoded schedule can be decoded");
    require(std::vector(list.begin(), list.end()) == std::vector(again.begin(), again.end()),
            "decoding the encoded schedule gives the same entries");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::span content(reinterpret_cast<const std::byte*>(data), size);
    ScheduleList list;
    list.append(scheduler::ScheduledProject());
    const std::size_t before = test::allocatedBytes;
    const bool decoded = decodeSchedule(content, scheduler::scheduleMagic, list);
    require(test::allocatedBytes - before <= memoryFor(size), "decoding stays within memoryFor()");

    plain::File file(content);
    const plain::Load expected = file.read();
    require(decoded == (expected == plain::Load::Replaced), "only a complete file is decoded");
    if (decoded) {
        checkEntries(list, file.items);
        checkRoundTrip(list, content);
    } else {
        require(list.size() == (expected == plain::Load::Untouched ? 1 : 0),
                "a damaged file empties the list, and a foreign file leaves it unchanged");
    }
    return 0;
}
