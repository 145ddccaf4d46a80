#include "scheduler/model/schedulecodec.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <exception>
#include <string>
#include <type_traits>
#include <utility>

namespace scheduler {
namespace {

static_assert(std::endian::native == std::endian::little,
              "the file's numbers are copied as they lie in memory");

// How many records a save looks ahead.
constexpr std::size_t lookAhead = 8;

/// Hands each field of a record to `visit`, in the order of the file. The one place that knows this order.
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

std::size_t encodedSize(const ScheduledProject& record) {
    std::size_t size = 0;
    visitFields(record, [&size]<class Field>(const Field& field) {
        if constexpr (std::is_same_v<Field, std::string>)
            size += sizeof(std::uint32_t) + field.size();
        else
            size += sizeof(field);
        return true;
    });
    return size;
}

/// Puts fields where there is known to be room for them.
class RecordCopier {
public:
    explicit RecordCopier(std::byte* target) : target_(target) {}

    bool operator()(const std::string& text) {
        (*this)(static_cast<std::uint32_t>(text.size()));
        std::memcpy(target_, text.data(), text.size());
        target_ += text.size();
        return true;
    }

    template<class Field>
    requires std::is_trivially_copyable_v<Field>
    bool operator()(const Field& field) {
        std::memcpy(target_, &field, sizeof(field));
        target_ += sizeof(field);
        return true;
    }

private:
    std::byte* target_;
};

/// Collects fields in a buffer and hands it on whenever it is full.
class Writer {
public:
    Writer(std::span<std::byte> buffer, const ContentSink& sink) : buffer_(buffer), sink_(sink) {}

    bool operator()(const std::string& text) {
        return (*this)(static_cast<std::uint32_t>(text.size())) && put(text.data(), text.size());
    }

    template<class Field>
    requires std::is_trivially_copyable_v<Field>
    bool operator()(const Field& field) { return put(&field, sizeof(field)); }

    /// A whole record: where it fits, its fields need not ask for room one by one.
    bool putRecord(const ScheduledProject& record) {
        const std::size_t size = encodedSize(record);
        if (size > buffer_.size() - used_)
            return visitFields(record, *this);
        visitFields(record, RecordCopier(buffer_.data() + used_));
        used_ += size;
        return true;
    }

    bool flush() {
        const std::size_t size = std::exchange(used_, 0);
        return sink_(buffer_.first(size));
    }

private:
    bool put(const void* source, std::size_t size) {
        if (size > buffer_.size() - used_)
            return putBeyond(source, size);
        std::memcpy(buffer_.data() + used_, source, size);
        used_ += size;
        return true;
    }

    bool putBeyond(const void* source, std::size_t size) {
        std::span rest(static_cast<const std::byte*>(source), size);
        while (!rest.empty()) {
            const std::span part = rest.first(std::min(rest.size(), buffer_.size() - used_));
            std::ranges::copy(part, buffer_.data() + used_);
            used_ += part.size();
            rest = rest.subspan(part.size());
            if (used_ == buffer_.size() && !flush())
                return false;
        }
        return true;
    }

    std::span<std::byte> buffer_;
    const ContentSink& sink_;
    std::size_t used_ = 0;
};

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
        // The count may be damaged and yet pass; memory is taken for what the content can hold.
        const std::size_t smallestRecord = encodedSize(ScheduledProject());
        entries.reserve(std::min<std::size_t>(count, contentSize / smallestRecord));
        for (std::uint32_t i = 0; i < count; ++i)
            if (!visitFields(entries.emplace_back(), read))
                return false;
        return true;
    } catch (const std::exception&) {
        // No memory, or more records than the address space holds: a file of a gigabyte has room for both.
        return false;
    }
}

} // namespace

std::vector<std::byte> encodeSchedule(std::span<const ScheduledProject> entries) {
    std::size_t size = 2 * sizeof(std::uint32_t);
    for (const ScheduledProject& entry : entries)
        size += encodedSize(entry);
    std::vector<std::byte> content(size);
    // All of it fits into the buffer, which is handed on once and is the content.
    encodeSchedule(entries, content, [](std::span<const std::byte>) { return true; });
    return content;
}

bool encodeSchedule(std::span<const ScheduledProject> entries, std::span<std::byte> buffer,
                    const ContentSink& sink) {
    Writer writer(buffer, sink);
    if (!writer(scheduleMagic) || !writer(static_cast<std::uint32_t>(entries.size())))
        return false;
    for (std::size_t i = 0; i < entries.size(); ++i) {
        // A text lies anywhere: asked for early, it is there when its turn comes.
        if (i + lookAhead < entries.size())
            __builtin_prefetch(entries[i + lookAhead].path.data());
        if (!writer.putRecord(entries[i]))
            return false;
    }
    return writer.flush();
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
