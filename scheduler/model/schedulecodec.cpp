#include "scheduler/model/schedulecodec.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cassert>
#include <cstring>
#include <exception>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace scheduler {
namespace {

static_assert(std::endian::native == std::endian::little,
              "the file's numbers are copied as they lie in memory");

// In records.
constexpr std::size_t prefetchDistance = 8;

/// Passes each field of a record to `visit`. The only place that defines the file's order of fields.
template<class Record, class Visitor>
bool visitFields(Record& record, Visitor&& visit) {
    return visit(record.path) && visit(record.lastResult) && visit(record.lastRun) && visit(record.kind) &&
           visit(record.time) && visit(record.minutes) && visit(record.afterIndex) &&
           visit(record.weekdays) && visit(record.dayOfMonth) && visit(record.runCommand) &&
           visit(record.dialupEntry) && visit(record.timeLimitMinutes) && visit(record.disconnectWhenDone) &&
           visit(record.disabled) && visit(record.running) && visit(record.waitingSince) &&
           visit(record.runStart) && visit(record.runNumber) && visit(record.nextRun) &&
           visit(record.retryLimit) && visit(record.retriesDone) && visit(record.retryIntervalMinutes);
}

// The span has a fixed length, so that copying it takes one or two machine instructions.
template<class Value>
auto bytesOf(const Value& value) {
    return std::as_bytes(std::span<const Value, 1>(&value, 1));
}

/// Passes the bytes of each field to `put`. A string's length precedes its bytes.
template<class Put>
bool putFields(const ScheduledProject& record, Put&& put) {
    return visitFields(record, [&put]<class Field>(const Field& field) {
        if constexpr (std::is_same_v<Field, std::string>)
            return put(bytesOf(static_cast<std::uint32_t>(field.size()))) &&
                   put(std::as_bytes(std::span(field)));
        else
            return put(bytesOf(field));
    });
}

std::size_t encodedSize(const ScheduledProject& record) {
    std::size_t size = 0;
    putFields(record, [&size](const auto& bytes) {
        size += bytes.size();
        return true;
    });
    return size;
}

void encode(const ScheduledProject& record, std::byte* target) {
    putFields(record, [next = target](const auto& bytes) mutable {
        std::memcpy(next, bytes.data(), bytes.size());
        next += bytes.size();
        return true;
    });
}

class Reader {
public:
    explicit Reader(std::span<const std::byte> content) : rest_(content) {}

    bool operator()(std::string& text) {
        std::uint32_t length = 0;
        if (!(*this)(length) || length > rest_.size())
            return false;
        text.assign(reinterpret_cast<const char*>(rest_.data()), length);
        rest_ = rest_.subspan(length);
        return true;
    }

    template<class Field>
    requires std::is_trivially_copyable_v<Field>
    bool operator()(Field& field) {
        if (rest_.size() < sizeof(field))
            return false;
        std::memcpy(static_cast<void*>(&field), rest_.data(), sizeof(field));
        rest_ = rest_.subspan(sizeof(field));
        return true;
    }

private:
    std::span<const std::byte> rest_;
};

bool readEntries(Reader& read, std::uint32_t count, std::size_t contentSize,
                 std::vector<ScheduledProject>& entries) {
    try {
        // The count may be damaged, so only what the content can hold is reserved.
        const std::size_t smallestRecord = encodedSize(ScheduledProject());
        entries.reserve(std::min<std::size_t>(count, contentSize / smallestRecord));
        for (std::uint32_t i = 0; i < count; ++i)
            if (!visitFields(entries.emplace_back(), read))
                return false;
        return true;
    } catch (const std::exception&) {
        // Out of memory, or more records than the address space holds.
        return false;
    }
}

} // namespace

bool encodeSchedule(std::span<const ScheduledProject> entries, std::span<std::byte> buffer,
                    const ContentSink& sink) {
    assert(buffer.size() >= 2 * sizeof(std::uint32_t));
    const std::array head = {scheduleMagic, static_cast<std::uint32_t>(entries.size())};
    std::memcpy(buffer.data(), head.data(), sizeof(head));
    std::size_t used = sizeof(head);
    for (std::size_t i = 0; i < entries.size(); ++i) {
        // Prefetch: the paths are scattered over the heap.
        if (i + prefetchDistance < entries.size())
            __builtin_prefetch(entries[i + prefetchDistance].path.data());
        const std::size_t size = encodedSize(entries[i]);
        if (size > buffer.size() - used && !sink(buffer.first(std::exchange(used, 0))))
            return false;
        if (size <= buffer.size()) {
            encode(entries[i], buffer.data() + used);
            used += size;
        } else if (!putFields(entries[i], sink)) {
            return false;
        }
    }
    return sink(buffer.first(used));
}

bool decodeSchedule(std::span<const std::byte> content, std::uint32_t expectedMagic, ScheduleList& list) {
    Reader read(content);
    std::uint32_t magic = 0;
    std::uint32_t count = 0;
    if (!read(magic) || (expectedMagic != 0 && magic != expectedMagic) || !read(count))
        return false;
    list.clear();
    if (count >= content.size())
        return false;
    std::vector<ScheduledProject> entries;
    if (!readEntries(read, count, content.size(), entries))
        return false;
    return list.assign(std::move(entries));
}

} // namespace scheduler
