// A simple reference reader for schedule files.
#pragma once

#include "tests/support/plainitem.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace plain {

/// Effect of a load on the current schedule.
enum class Load { Untouched, Emptied, Replaced };

class File {
public:
    explicit File(std::span<const std::byte> content) : content_(content) {}

    Load read() {
        const std::uint32_t magic = number();
        if (failed_ || magic != 0x0046C71C)
            return Load::Untouched;
        const std::uint32_t count = number();
        if (failed_)
            return Load::Untouched;
        if (count >= content_.size())
            return Load::Emptied;
        for (std::uint32_t i = 0; i < count; ++i) {
            items.push_back(readItem());
            if (failed_) {
                items.clear();
                return Load::Emptied;
            }
        }
        return Load::Replaced;
    }

    std::vector<Item> items; ///< empty unless the file is complete

private:
    Item readItem() {
        Item item;
        item.path = text();
        item.result = text();
        item.lastRun = integer();
        item.kind = integer();
        item.time = integer();
        item.minutes = integer();
        item.after = integer();
        for (unsigned char& flag : item.days)
            flag = byte();
        item.dayOfMonth = integer();
        item.command = integer();
        item.dialup = text();
        item.timeLimit = integer();
        item.hangsUp = byte();
        item.off = byte();
        item.runs = byte();
        item.waitsSince = integer();
        item.began = integer();
        item.number = integer();
        item.next = integer();
        item.retries = number();
        item.retried = number();
        item.retryMinutes = integer();
        return item;
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
    int integer() { return static_cast<int>(number()); }
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

} // namespace plain
