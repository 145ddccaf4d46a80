// Fuzzes schedule files.
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

/// For the largest possible entry array, a second one while it grows for a damaged entry, and the texts.
std::size_t memoryFor(std::size_t contentSize) {
    return (contentSize / 82 + 1) * 3 * sizeof(scheduler::ScheduledProject) + 2 * contentSize + 3 * 64;
}

void checkEntries(const ScheduleList& list, const std::vector<plain::Item>& items) {
    require(list.size() == items.size(), "there are as many entries as records");
    for (std::size_t i = 0; i < items.size(); ++i)
        require(plain::itemOf(list[i]) == items[i], "an entry is what its record says");
}

void checkRoundTrip(const ScheduleList& list, std::span<const std::byte> content) {
    const std::vector<std::byte> written = test::encodedSchedule(list.entries());
    require(written.size() <= content.size() &&
                std::memcmp(written.data(), content.data(), written.size()) == 0,
            "what was read is written as it was");
    ScheduleList again;
    require(decodeSchedule(written, scheduler::scheduleMagic, again), "what was written is read");
    require(std::vector(list.begin(), list.end()) == std::vector(again.begin(), again.end()),
            "what is read again is the same");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::span content(reinterpret_cast<const std::byte*>(data), size);
    ScheduleList list;
    list.append(scheduler::ScheduledProject());
    const std::size_t before = test::allocatedBytes;
    const bool decoded = decodeSchedule(content, scheduler::scheduleMagic, list);
    require(test::allocatedBytes - before <= memoryFor(size), "no more memory than the size suggests");

    plain::File file(content);
    const plain::Load expected = file.read();
    require(decoded == (expected == plain::Load::Replaced), "only a whole file is read");
    if (decoded) {
        checkEntries(list, file.items);
        checkRoundTrip(list, content);
    } else {
        require(list.size() == (expected == plain::Load::Untouched ? 1 : 0),
                "a damaged file leaves no entries, a foreign one those that were there");
    }
    return 0;
}
