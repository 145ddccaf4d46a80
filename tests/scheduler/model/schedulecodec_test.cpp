#include "scheduler/model/nextrun.h"
#include "scheduler/model/schedulecodec.h"
#include "tests/support/allocations.h"
#include "tests/support/fakeclock.h"
#include "tests/support/filledentry.h"

#include <gmock/gmock.h>

#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace {

using scheduler::decodeSchedule;
using scheduler::encodeSchedule;
using scheduler::ScheduledProject;
using scheduler::ScheduleKind;
using scheduler::ScheduleList;
using scheduler::scheduleMagic;
using testing::ElementsAre;

using Bytes = std::vector<std::byte>;

constexpr std::size_t headerSize = 8;
constexpr std::size_t emptyRecordSize = 82;
constexpr std::size_t countOffset = 4;
constexpr std::size_t firstPathOffset = 8;

Bytes bytes(std::initializer_list<int> values) {
    Bytes result;
    for (const int value : values)
        result.push_back(static_cast<std::byte>(value));
    return result;
}

void append(Bytes& to, const Bytes& more) {
    to.insert(to.end(), more.begin(), more.end());
}

void appendText(Bytes& to, const std::string& text) {
    for (const char character : text)
        to.push_back(static_cast<std::byte>(character));
}

void putNumber(Bytes& content, std::size_t offset, std::uint32_t value) {
    for (std::size_t i = 0; i < 4; ++i)
        content[offset + i] = static_cast<std::byte>(value >> 8 * i);
}

std::vector<ScheduledProject> severalEntries() {
    std::vector<ScheduledProject> entries(3);
    entries[0].path = "C:\\a.kra";
    entries[1] = test::filledEntry();
    entries[2].dialupEntry = "Line";
    return entries;
}

/// A list that already holds something, so that it shows whether a decoding touched it.
class DecodingTest : public testing::Test {
protected:
    DecodingTest() {
        ScheduledProject entry;
        entry.path = "before";
        list.append(entry);
    }

    bool decode(const Bytes& content, std::uint32_t magic = scheduleMagic) {
        return decodeSchedule(content, magic, list);
    }
    std::vector<ScheduledProject> entries() const { return {list.begin(), list.end()}; }
    bool isUntouched() const { return list.size() == 1 && list[0].path == "before"; }

    ScheduleList list;
};

// The exact bytes

TEST(EncodedSchedule, AnEmptyScheduleIsExactlyEightBytes) {
    EXPECT_EQ(encodeSchedule({}), bytes({0x1C, 0xC7, 0x46, 0x00, 0, 0, 0, 0}));
}

TEST(EncodedSchedule, ARecordWithEmptyTextsTakes82Bytes) {
    EXPECT_EQ(encodeSchedule(std::vector<ScheduledProject>(1)).size(), headerSize + emptyRecordSize);
    EXPECT_EQ(encodeSchedule(std::vector<ScheduledProject>(5)).size(), headerSize + 5 * emptyRecordSize);
}

TEST(EncodedSchedule, AFullRecordByteByByte) {
    Bytes expected = bytes({0x1C, 0xC7, 0x46, 0x00, 1, 0, 0, 0});
    append(expected, bytes({17, 0, 0, 0}));
    appendText(expected, "C:\\Sites\\news.kra");
    append(expected, bytes({8, 0, 0, 0}));
    appendText(expected, "2 errors");
    append(expected, bytes({0x14, 0x13, 0x12, 0x11})); // lastRun
    append(expected, bytes({4, 0, 0, 0}));             // kind
    append(expected, bytes({0x24, 0x23, 0x22, 0x21})); // time
    append(expected, bytes({0xFE, 0xFF, 0xFF, 0xFF})); // minutes
    append(expected, bytes({0x34, 0x33, 0x32, 0x31})); // afterIndex
    append(expected, bytes({0, 1, 0, 0, 1, 1, 0}));    // weekdays
    append(expected, bytes({31, 0, 0, 0}));            // dayOfMonth
    append(expected, bytes({3, 0, 0, 0}));             // runCommand
    append(expected, bytes({11, 0, 0, 0}));
    appendText(expected, "Office line");
    append(expected, bytes({90, 0, 0, 0}));            // timeLimitMinutes
    append(expected, bytes({1, 2, 3}));                // disconnectWhenDone, disabled, running
    append(expected, bytes({0x44, 0x43, 0x42, 0x41})); // waitingSince
    append(expected, bytes({0x54, 0x53, 0x52, 0x51})); // runStart
    append(expected, bytes({0x64, 0x63, 0x62, 0x61})); // runNumber
    append(expected, bytes({0xFF, 0xFF, 0xFF, 0x7F})); // nextRun
    append(expected, bytes({0xF4, 0xF3, 0xF2, 0xF1})); // retryLimit
    append(expected, bytes({0xE4, 0xE3, 0xE2, 0xE1})); // retriesDone
    append(expected, bytes({0x74, 0x73, 0x72, 0x71})); // retryIntervalMinutes
    EXPECT_EQ(encodeSchedule(std::vector{test::filledEntry()}), expected);
}

TEST(EncodedSchedule, RecordsFollowOneAnotherWithoutPadding) {
    const std::vector<ScheduledProject> entries = severalEntries();
    Bytes expected = bytes({0x1C, 0xC7, 0x46, 0x00, 3, 0, 0, 0});
    for (const ScheduledProject& entry : entries) {
        Bytes one = encodeSchedule(std::vector{entry});
        one.erase(one.begin(), one.begin() + headerSize);
        append(expected, one);
    }
    EXPECT_EQ(encodeSchedule(entries), expected);
}

TEST(EncodedSchedule, ComesInPiecesThatTogetherAreTheWhole) {
    std::vector<ScheduledProject> entries = severalEntries();
    entries.push_back(test::filledEntry());
    entries.back().lastResult = std::string(300, 'x'); // longer than every buffer but the last
    const Bytes whole = encodeSchedule(entries);
    for (const std::size_t size : {1U, 7U, 64U, 255U, 100000U}) {
        Bytes buffer(size);
        Bytes collected;
        EXPECT_TRUE(scheduler::encodeSchedule(entries, buffer, [&](std::span<const std::byte> piece) {
            collected.insert(collected.end(), piece.begin(), piece.end());
            return true;
        }));
        EXPECT_EQ(collected, whole) << size;
    }
}

TEST(EncodedSchedule, EndsAtThePieceThatIsRefused) {
    const std::vector<ScheduledProject> entries(1000);
    Bytes buffer(100);
    for (const int accepted : {0, 1, 5}) {
        int pieces = 0;
        EXPECT_FALSE(scheduler::encodeSchedule(
            entries, buffer, [&](std::span<const std::byte>) { return pieces++ < accepted; }));
        EXPECT_EQ(pieces, accepted + 1);
    }
    int pieces = 0;
    EXPECT_FALSE(scheduler::encodeSchedule({}, buffer, [&](std::span<const std::byte>) {
        ++pieces;
        return false;
    })) << "also when it is the last";
    EXPECT_EQ(pieces, 1);
}

TEST(EncodedSchedule, EndsAtTheHeaderWhenThatIsRefused) {
    const std::vector<ScheduledProject> entries(3);
    for (const std::size_t size : {1U, 4U, 7U, 8U}) {
        // The magic is refused first, then the count.
        for (std::size_t accepted = 0; accepted * size < headerSize; ++accepted) {
            Bytes buffer(size);
            std::size_t pieces = 0;
            EXPECT_FALSE(scheduler::encodeSchedule(
                entries, buffer, [&](std::span<const std::byte>) { return pieces++ < accepted; }));
            EXPECT_EQ(pieces, accepted + 1) << size;
        }
    }
}

// Reading back

TEST_F(DecodingTest, EveryFieldComesBack) {
    EXPECT_TRUE(decode(encodeSchedule(severalEntries())));
    EXPECT_EQ(entries(), severalEntries());
}

TEST_F(DecodingTest, TheArrayIsSizedToTheCountAtOnce) {
    const Bytes content = encodeSchedule(std::vector<ScheduledProject>(1000));
    const std::size_t before = test::allocationCount;
    EXPECT_TRUE(decode(content));
    EXPECT_EQ(test::allocationCount, before + 1);
    EXPECT_EQ(list.capacity(), 1000u);
}

TEST_F(DecodingTest, AnyTextComesBack) {
    std::vector<ScheduledProject> stored(2);
    for (int character = 0; character < 256; ++character)
        stored[0].path += static_cast<char>(character); // the zero as well: a text is counted, not ended
    stored[0].lastResult.assign(100'000, 'x');
    EXPECT_TRUE(decode(encodeSchedule(stored)));
    EXPECT_EQ(entries(), stored);
}

TEST_F(DecodingTest, ACountOfNoneIsAnEmptySchedule) {
    EXPECT_TRUE(decode(encodeSchedule({})));
    EXPECT_TRUE(list.empty());
}

TEST_F(DecodingTest, WhatFollowsTheLastRecordIsIgnored) {
    Bytes content = encodeSchedule(severalEntries());
    append(content, bytes({1, 2, 3, 4, 5}));
    EXPECT_TRUE(decode(content));
    EXPECT_EQ(entries(), severalEntries());

    content = encodeSchedule({});
    append(content, bytes({9}));
    EXPECT_TRUE(decode(content));
    EXPECT_TRUE(list.empty());
}

TEST_F(DecodingTest, AnUnknownKindLoadsAndNeverRuns) {
    const test::FakeClock clock(base::TimeValue(1'800'000'000));
    for (const int kind : {-1, 6, 7, 255, 0x7FFFFFFF}) {
        std::vector<ScheduledProject> stored(1);
        stored[0].kind = static_cast<ScheduleKind>(kind);
        ASSERT_TRUE(decode(encodeSchedule(stored)));
        EXPECT_EQ(entries(), stored);
        EXPECT_EQ(computeNextRun({.startupFlag = true, .clock = &clock}, list[0], clock.now()),
                  base::TimeValue::never());
    }
}

TEST_F(DecodingTest, ForeignNumbersAreKeptAsTheyAre) {
    std::vector<ScheduledProject> stored(1);
    stored[0].runCommand = static_cast<scheduler::RunCommand>(99);
    stored[0].disabled = 255;
    stored[0].weekdays.fill(200);
    stored[0].afterIndex = -5;
    stored[0].dayOfMonth = -1;
    EXPECT_TRUE(decode(encodeSchedule(stored)));
    EXPECT_EQ(entries(), stored);
}

TEST_F(DecodingTest, ObserversLearnOfASuccessOnly) {
    struct Counter : scheduler::ScheduleObserver {
        std::vector<std::size_t> loads;
        void onEntryInserted(std::size_t, bool) override { ADD_FAILURE(); }
        void onEntriesLoaded(std::size_t count) override { loads.push_back(count); }
    } counter;
    list.addObserver(counter);
    Bytes content = encodeSchedule(severalEntries());
    decode(content);
    content.pop_back();
    decode(content);
    decode({});
    EXPECT_THAT(counter.loads, ElementsAre(3u));
}

// Failures

TEST_F(DecodingTest, LessThanAHeaderLeavesTheScheduleUntouched) {
    Bytes content = encodeSchedule({});
    while (!content.empty()) {
        content.pop_back();
        EXPECT_FALSE(decode(content)) << content.size() << " bytes";
        EXPECT_TRUE(isUntouched()) << content.size() << " bytes";
    }
}

TEST_F(DecodingTest, AForeignMagicLeavesTheScheduleUntouched) {
    Bytes content = encodeSchedule(severalEntries());
    content[2] = std::byte{0x47};
    EXPECT_FALSE(decode(content));
    EXPECT_TRUE(isUntouched());
    EXPECT_FALSE(decode(encodeSchedule(severalEntries()), 1));
    EXPECT_TRUE(isUntouched());
}

TEST_F(DecodingTest, AnExpectedMagicOfZeroTakesAny) {
    Bytes content = encodeSchedule(severalEntries());
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
        Bytes content = encodeSchedule(std::vector<ScheduledProject>(1));
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
    Bytes content = encodeSchedule(stored);
    const std::size_t lengthOfResult = firstPathOffset + 4 + 500;
    putNumber(content, lengthOfResult, 75); // 74 bytes follow it
    EXPECT_FALSE(decode(content));
    EXPECT_TRUE(list.empty());
}

TEST_F(DecodingTest, ADamagedLastRecordLeavesNoneOfTheOthers) {
    Bytes content = encodeSchedule(severalEntries());
    content.pop_back();
    EXPECT_FALSE(decode(content));
    EXPECT_TRUE(list.empty());
}

TEST_F(DecodingTest, WithoutMemoryTheScheduleIsEmpty) {
    const Bytes content = encodeSchedule(severalEntries());
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
    const Bytes written = encodeSchedule(list.entries());
    ASSERT_LE(written.size(), content.size()) << what;
    ASSERT_EQ(std::memcmp(written.data(), content.data(), written.size()), 0) << what;
}

TEST(DamagedSchedule, EveryTruncation) {
    const Bytes whole = encodeSchedule(severalEntries());
    for (std::size_t size = 0; size < whole.size(); ++size) {
        const Bytes content(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
        checkAnyContent(content, "the first " + std::to_string(size) + " bytes");
        ScheduleList list;
        ASSERT_FALSE(decodeSchedule(content, scheduleMagic, list)) << size;
    }
}

TEST(DamagedSchedule, EveryChangeOfASingleByte) {
    const Bytes whole = encodeSchedule(severalEntries());
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
