#include "scheduler/model/schedulecodec.h"
#include "tests/scheduler/model/schedulecodecbytes.h"
#include "tests/support/allocations.h"
#include "tests/support/encodedschedule.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <random>
#include <string>
#include <vector>

namespace {

using scheduler::decodeSchedule;
using scheduler::ScheduledProject;
using scheduler::ScheduleList;
using scheduler::scheduleMagic;
using test::Bytes;
using test::bytes;
using test::countOffset;
using test::DecodingTest;
using test::emptyRecordSize;
using test::encodedSchedule;
using test::firstPathOffset;
using test::headerSize;
using test::putNumber;
using test::severalEntries;

// Failures

TEST_F(DecodingTest, LessThanAHeaderLeavesTheScheduleUntouched) {
    Bytes content = encodedSchedule({});
    while (!content.empty()) {
        content.pop_back();
        EXPECT_FALSE(decode(content)) << content.size() << " bytes";
        EXPECT_TRUE(isUntouched()) << content.size() << " bytes";
    }
}

TEST_F(DecodingTest, AForeignMagicLeavesTheScheduleUntouched) {
    Bytes content = encodedSchedule(severalEntries());
    content[2] = std::byte{0x47};
    EXPECT_FALSE(decode(content));
    EXPECT_TRUE(isUntouched());
    EXPECT_FALSE(decode(encodedSchedule(severalEntries()), 1));
    EXPECT_TRUE(isUntouched());
}

TEST_F(DecodingTest, AnExpectedMagicOfZeroTakesAny) {
    Bytes content = encodedSchedule(severalEntries());
    putNumber(content, 0, 0xDEADBEEF);
    EXPECT_TRUE(decode(content, 0));
    EXPECT_EQ(entries(), severalEntries());
    EXPECT_FALSE(decode({}, 0));
}

TEST_F(DecodingTest, ACountNotSmallerThanTheSizeIsRefused) {
    Bytes content(900);
    putNumber(content, 0, scheduleMagic);
    for (const std::uint32_t count : {899u, 900u, 901u, 1000u, 0x7FFFFFFFu, 0xFFFFFFFFu}) {
        putNumber(content, countOffset, count);
        list.append(ScheduledProject());
        EXPECT_FALSE(decode(content)) << count;
        EXPECT_TRUE(list.empty()) << count;
    }
}

TEST_F(DecodingTest, ACountOfAThousandInNineHundredBytesIsRefusedBeforeMemoryIsTaken) {
    Bytes content(900);
    putNumber(content, 0, scheduleMagic);
    for (const std::uint32_t count : {1000u, 900u}) {
        putNumber(content, countOffset, count);
        const std::size_t before = test::allocationCount;
        EXPECT_FALSE(decodeSchedule(content, scheduleMagic, list));
        EXPECT_EQ(test::allocationCount, before) << count;
        EXPECT_TRUE(list.empty());
    }
}

/// The offset of each text's length in a record whose texts are empty.
constexpr std::size_t textOffsets[] = {firstPathOffset, firstPathOffset + 4, firstPathOffset + 8 + 35};

TEST_F(DecodingTest, ATextLengthNotSmallerThanTheSizeIsRefused) {
    for (const std::size_t offset : textOffsets) {
        Bytes content = encodedSchedule(std::vector<ScheduledProject>(1));
        const auto size = static_cast<std::uint32_t>(content.size());
        for (const std::uint32_t length : {size, size + 1, 0x80000000u, 0xFFFFFFFFu}) {
            putNumber(content, offset, length);
            list.append(ScheduledProject());
            EXPECT_FALSE(decode(content)) << offset << ", " << length;
            EXPECT_TRUE(list.empty()) << offset << ", " << length;
        }
    }
}

TEST_F(DecodingTest, ATextLongerThanTheRestIsRefused) {
    std::vector<ScheduledProject> stored(1);
    stored[0].path = std::string(500, 'p');
    Bytes content = encodedSchedule(stored);
    const std::size_t lengthOfResult = firstPathOffset + 4 + 500;
    putNumber(content, lengthOfResult, 75); // 74 bytes follow it
    EXPECT_FALSE(decode(content));
    EXPECT_TRUE(list.empty());
}

TEST_F(DecodingTest, ADamagedLastRecordLeavesNoneOfTheOthers) {
    Bytes content = encodedSchedule(severalEntries());
    content.pop_back();
    EXPECT_FALSE(decode(content));
    EXPECT_TRUE(list.empty());
}

TEST_F(DecodingTest, WithoutMemoryTheScheduleIsEmpty) {
    const Bytes content = encodedSchedule(severalEntries());
    bool decoded = true;
    {
        const test::RefusedAllocations refused;
        decoded = decode(content);
    }
    EXPECT_FALSE(decoded);
    EXPECT_TRUE(list.empty());
}

// Damage of every kind: entries or none, and never much memory

/// Decodes and checks what must hold for any content at all.
void checkAnyContent(const Bytes& content, const std::string& what) {
    ScheduleList list;
    list.append(ScheduledProject());
    const std::size_t before = test::allocatedBytes;
    const bool decoded = decodeSchedule(content, scheduleMagic, list);
    const std::size_t taken = test::allocatedBytes - before;
    // One array for the entries the content can hold, one more while it grows by the last, damaged one, and
    // the texts, which are parts of the content.
    const std::size_t limit =
        (content.size() / emptyRecordSize + 1) * 3 * sizeof(ScheduledProject) + 2 * content.size() + 3 * 64;
    ASSERT_LE(taken, limit) << what;
    const bool headerIsGood = content.size() >= headerSize && content[0] == std::byte{0x1C} &&
                              content[1] == std::byte{0xC7} && content[2] == std::byte{0x46} &&
                              content[3] == std::byte{0};
    if (!decoded) {
        ASSERT_EQ(list.size(), headerIsGood ? 0u : 1u) << what;
        return;
    }
    // What was read is what would be written.
    const Bytes written = encodedSchedule(list.entries());
    ASSERT_LE(written.size(), content.size()) << what;
    ASSERT_EQ(std::memcmp(written.data(), content.data(), written.size()), 0) << what;
}

TEST(DamagedSchedule, EveryTruncation) {
    const Bytes whole = encodedSchedule(severalEntries());
    for (std::size_t size = 0; size < whole.size(); ++size) {
        const Bytes content(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
        checkAnyContent(content, "the first " + std::to_string(size) + " bytes");
        ScheduleList list;
        ASSERT_FALSE(decodeSchedule(content, scheduleMagic, list)) << size;
    }
}

TEST(DamagedSchedule, EveryChangeOfASingleByte) {
    const Bytes whole = encodedSchedule(severalEntries());
    Bytes content = whole;
    for (std::size_t offset = 0; offset < whole.size(); ++offset) {
        for (int change = 1; change < 256; ++change) {
            content[offset] = whole[offset] ^ static_cast<std::byte>(change);
            checkAnyContent(content,
                            "offset " + std::to_string(offset) + " changed by " + std::to_string(change));
            if (testing::Test::HasFatalFailure())
                return;
        }
        content[offset] = whole[offset];
    }
}

TEST(DamagedSchedule, ADamagedCountCostsNoMemoryBeyondTheContents) {
    // The largest count that passes the comparison with the size.
    Bytes content(1'000'000);
    putNumber(content, 0, scheduleMagic);
    putNumber(content, countOffset, 999'999);
    checkAnyContent(content, "a count of 999,999");
}

TEST(DamagedSchedule, RandomContents) {
    std::mt19937 random(20260102);
    for (int i = 0; i < 20'000; ++i) {
        Bytes content(random() % 600);
        // Small numbers, so that counts and lengths are often plausible.
        for (std::byte& byte : content)
            byte = random() % 3 ? std::byte{0} : static_cast<std::byte>(random() % 64);
        if (content.size() >= headerSize) {
            putNumber(content, 0, scheduleMagic);
            putNumber(content, countOffset, random() % 8);
        }
        checkAnyContent(content, "content " + std::to_string(i) + " of seed 20260102");
        if (testing::Test::HasFatalFailure())
            return;
    }
}

} // namespace
