// A varied schedule and random damage to its file. A seed gives the same damage on every platform.
#pragma once

#include "tests/support/filledentry.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace test {

inline std::vector<scheduler::ScheduledProject> richSchedule() {
    std::vector<scheduler::ScheduledProject> entries;
    for (int i = 0; i < 40; ++i) {
        const auto length = static_cast<std::size_t>(i);
        scheduler::ScheduledProject entry = i % 5 == 0 ? scheduler::ScheduledProject() : filledEntry();
        entry.path = (i % 7 == 3 ? "run:" : "C:\\Sites\\") + std::string(length * length / 4, 'p') + ".kra";
        entry.kind = static_cast<scheduler::ScheduleKind>(i % (scheduler::kindCount + 1) - i / 39);
        entry.afterIndex = i - 1;
        entry.lastResult = std::string(i % 3 == 0 ? 0 : length, 'r');
        entry.dialupEntry = std::string(i % 4 == 0 ? 3 * length : 0, '\xE4');
        entries.push_back(entry);
    }
    return entries;
}

class Damage {
public:
    Damage(std::vector<std::byte> whole, std::uint32_t seed) : content_(std::move(whole)), random_(seed) {}

    std::vector<std::byte> done() {
        for (std::size_t rounds = 1 + below(3); rounds > 0; --rounds)
            damage();
        return content_;
    }

private:
    void damage() {
        if (content_.empty())
            return;
        const std::size_t start = below(content_.size());
        const std::size_t length = std::min(1 + below(200), content_.size() - start);
        const auto from = content_.begin() + static_cast<std::ptrdiff_t>(start);
        const auto to = from + static_cast<std::ptrdiff_t>(length);
        const std::vector<std::byte> block(from, to);
        switch (below(8)) {
        case 0: // flipped bit
            *from ^= static_cast<std::byte>(1u << below(8));
            break;
        case 1:
            putNumber(start);
            break;
        case 2: // magic or count
            putNumber(below(2) * 4);
            break;
        case 3: // truncated
            content_.erase(from, content_.end());
            break;
        case 4:
            content_.erase(from, to);
            break;
        case 5: // duplicated block
            content_.insert(from, block.begin(), block.end());
            break;
        case 6: // zeroed block
            std::fill(from, to, std::byte{0});
            break;
        default: // trailing bytes
            content_.insert(content_.end(), length, static_cast<std::byte>(below(256)));
        }
    }

    void putNumber(std::size_t position) {
        const auto size = static_cast<std::uint32_t>(content_.size());
        const std::uint32_t numbers[] = {0,    1,        39,         41,         size - 1,
                                         size, size + 1, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF};
        const std::uint32_t number = numbers[below(std::size(numbers))];
        for (std::size_t i = 0; i < 4 && position + i < content_.size(); ++i)
            content_[position + i] = static_cast<std::byte>(number >> 8 * i);
    }

    std::size_t below(std::size_t limit) { return limit == 0 ? 0 : random_() % limit; }

    std::vector<std::byte> content_;
    std::mt19937 random_;
};

} // namespace test
