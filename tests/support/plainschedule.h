// The schedule file's format told once more, as plainly as it can be, to compare the program's reading with.
#pragma once

#include "scheduler/model/scheduledproject.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace plainschedule {

/// What a load makes of the schedule that was there before.
enum class Result { Untouched, Emptied, Replaced };

struct Record {
    std::string path, lastResult, dialupEntry;
    std::uint32_t lastRun, kind, time, minutes, afterIndex;
    std::array<unsigned char, 7> weekdays;
    std::uint32_t dayOfMonth, runCommand, timeLimitMinutes;
    unsigned char disconnectWhenDone, disabled, running;
    std::uint32_t waitingSince, runStart, runNumber, nextRun, retryLimit, retriesDone, retryIntervalMinutes;
};

class File {
public:
    explicit File(std::span<const std::byte> content) : content_(content) {}

    Result read() {
        const std::uint32_t magic = number();
        if (failed_ || magic != 0x0046C71C)
            return Result::Untouched;
        const std::uint32_t count = number();
        if (failed_)
            return Result::Untouched;
        if (count >= content_.size())
            return Result::Emptied;
        for (std::uint32_t i = 0; i < count; ++i) {
            const Record record = readRecord();
            if (failed_)
                return Result::Emptied;
            records.push_back(record);
        }
        return Result::Replaced;
    }

    std::vector<Record> records;

private:
    Record readRecord() {
        Record record;
        record.path = text();
        record.lastResult = text();
        record.lastRun = number();
        record.kind = number();
        record.time = number();
        record.minutes = number();
        record.afterIndex = number();
        for (unsigned char& flag : record.weekdays)
            flag = byte();
        record.dayOfMonth = number();
        record.runCommand = number();
        record.dialupEntry = text();
        record.timeLimitMinutes = number();
        record.disconnectWhenDone = byte();
        record.disabled = byte();
        record.running = byte();
        record.waitingSince = number();
        record.runStart = number();
        record.runNumber = number();
        record.nextRun = number();
        record.retryLimit = number();
        record.retriesDone = number();
        record.retryIntervalMinutes = number();
        return record;
    }

    unsigned char byte() {
        if (position_ == content_.size())
            failed_ = true;
        return failed_ ? 0 : static_cast<unsigned char>(content_[position_++]);
    }
    std::uint32_t number() {
        const std::uint32_t first = byte();
        const std::uint32_t second = byte();
        const std::uint32_t third = byte();
        return first + (second << 8) + (third << 16) + (std::uint32_t{byte()} << 24);
    }
    std::string text() {
        const std::uint32_t length = number();
        if (length >= content_.size())
            failed_ = true;
        std::string characters;
        for (std::uint32_t i = 0; i < length && !failed_; ++i)
            characters += static_cast<char>(byte());
        return characters;
    }

    std::span<const std::byte> content_;
    std::size_t position_ = 0;
    bool failed_ = false;
};

inline bool same(const scheduler::ScheduledProject& entry, const Record& record) {
    const auto is = [](base::TimeValue time, std::uint32_t number) {
        return static_cast<std::uint32_t>(time.seconds()) == number;
    };
    const auto equal = [](auto field, std::uint32_t number) {
        return static_cast<std::uint32_t>(field) == number;
    };
    return entry.path == record.path && entry.lastResult == record.lastResult &&
           is(entry.lastRun, record.lastRun) && equal(entry.kind, record.kind) &&
           is(entry.time, record.time) && equal(entry.minutes, record.minutes) &&
           equal(entry.afterIndex, record.afterIndex) && entry.weekdays == record.weekdays &&
           equal(entry.dayOfMonth, record.dayOfMonth) && equal(entry.runCommand, record.runCommand) &&
           entry.dialupEntry == record.dialupEntry &&
           equal(entry.timeLimitMinutes, record.timeLimitMinutes) &&
           equal(entry.disconnectWhenDone, record.disconnectWhenDone) &&
           equal(entry.disabled, record.disabled) && equal(entry.running, record.running) &&
           is(entry.waitingSince, record.waitingSince) && is(entry.runStart, record.runStart) &&
           equal(entry.runNumber, record.runNumber) && is(entry.nextRun, record.nextRun) &&
           equal(entry.retryLimit, record.retryLimit) && equal(entry.retriesDone, record.retriesDone) &&
           equal(entry.retryIntervalMinutes, record.retryIntervalMinutes);
}

} // namespace plainschedule
