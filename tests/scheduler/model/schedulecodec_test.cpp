#include "scheduler/model/nextrun.h"
#include "scheduler/model/schedulecodec.h"
#include "tests/scheduler/model/schedulecodecbytes.h"
#include "tests/support/allocations.h"
#include "tests/support/encodedschedule.h"
#include "tests/support/fakeclock.h"
#include "tests/support/filledentry.h"

#include <gmock/gmock.h>

#include <cstring>
#include <span>
#include <string>
#include <vector>

namespace {

using scheduler::kindCount;
using scheduler::ScheduledProject;
using scheduler::ScheduleKind;
using test::append;
using test::appendText;
using test::Bytes;
using test::bytes;
using test::DecodingTest;
using test::emptyRecordSize;
using test::encodedSchedule;
using test::headerSize;
using test::severalEntries;
using testing::ElementsAre;

// The exact bytes

TEST(EncodedSchedule, AnEmptyScheduleIsExactlyEightBytes) {
    EXPECT_EQ(encodedSchedule({}), bytes({0x1C, 0xC7, 0x46, 0x00, 0, 0, 0, 0}));
}

TEST(EncodedSchedule, ARecordWithEmptyTextsTakes82Bytes) {
    EXPECT_EQ(encodedSchedule(std::vector<ScheduledProject>(1)).size(), headerSize + emptyRecordSize);
    EXPECT_EQ(encodedSchedule(std::vector<ScheduledProject>(5)).size(), headerSize + 5 * emptyRecordSize);
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
    EXPECT_EQ(encodedSchedule(std::vector{test::filledEntry()}), expected);
}

TEST(EncodedSchedule, RecordsFollowOneAnotherWithoutPadding) {
    const std::vector<ScheduledProject> entries = severalEntries();
    Bytes expected = bytes({0x1C, 0xC7, 0x46, 0x00, 3, 0, 0, 0});
    for (const ScheduledProject& entry : entries) {
        Bytes one = encodedSchedule(std::vector{entry});
        one.erase(one.begin(), one.begin() + headerSize);
        append(expected, one);
    }
    EXPECT_EQ(encodedSchedule(entries), expected);
}

TEST(EncodedSchedule, ComesInPiecesThatTogetherAreTheWhole) {
    std::vector<ScheduledProject> entries = severalEntries();
    entries.push_back(test::filledEntry());
    entries.back().lastResult = std::string(300, 'x'); // longer than every buffer but the last
    const Bytes whole = encodedSchedule(entries);
    for (const std::size_t size : {8U, 64U, 255U, 100000U}) {
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
    // One larger than a record and one smaller.
    for (const std::size_t size : {100U, 8U}) {
        Bytes buffer(size);
        for (const int accepted : {0, 1, 5}) {
            int pieces = 0;
            EXPECT_FALSE(scheduler::encodeSchedule(
                entries, buffer, [&](std::span<const std::byte>) { return pieces++ < accepted; }));
            EXPECT_EQ(pieces, accepted + 1) << size;
        }
        int pieces = 0;
        EXPECT_FALSE(scheduler::encodeSchedule({}, buffer, [&](std::span<const std::byte>) {
            ++pieces;
            return false;
        })) << "also when it is the last";
        EXPECT_EQ(pieces, 1);
    }
}

// Reading back

TEST_F(DecodingTest, EveryFieldComesBack) {
    EXPECT_TRUE(decode(encodedSchedule(severalEntries())));
    EXPECT_EQ(entries(), severalEntries());
}

TEST_F(DecodingTest, TheArrayIsSizedToTheCountAtOnce) {
    const Bytes content = encodedSchedule(std::vector<ScheduledProject>(1000));
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
    EXPECT_TRUE(decode(encodedSchedule(stored)));
    EXPECT_EQ(entries(), stored);
}

TEST_F(DecodingTest, ACountOfNoneIsAnEmptySchedule) {
    EXPECT_TRUE(decode(encodedSchedule({})));
    EXPECT_TRUE(list.empty());
}

TEST_F(DecodingTest, WhatFollowsTheLastRecordIsIgnored) {
    Bytes content = encodedSchedule(severalEntries());
    append(content, bytes({1, 2, 3, 4, 5}));
    EXPECT_TRUE(decode(content));
    EXPECT_EQ(entries(), severalEntries());

    content = encodedSchedule({});
    append(content, bytes({9}));
    EXPECT_TRUE(decode(content));
    EXPECT_TRUE(list.empty());
}

TEST_F(DecodingTest, AnUnknownKindLoadsAndNeverRuns) {
    const test::FakeClock clock(base::TimeValue(1'800'000'000));
    for (const int kind : {-1, kindCount, kindCount + 1, 255, 0x7FFFFFFF}) {
        std::vector<ScheduledProject> stored(1);
        stored[0].kind = static_cast<ScheduleKind>(kind);
        ASSERT_TRUE(decode(encodedSchedule(stored)));
        EXPECT_EQ(entries(), stored);
        EXPECT_EQ(computeNextRun({.startupFlag = true}, list[0], clock.now(), clock),
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
    EXPECT_TRUE(decode(encodedSchedule(stored)));
    EXPECT_EQ(entries(), stored);
}

TEST_F(DecodingTest, ObserversLearnOfASuccessOnly) {
    struct Counter : scheduler::ScheduleObserver {
        std::vector<std::size_t> loads;
        void onEntryInserted(std::size_t, bool) override { ADD_FAILURE(); }
        void onEntriesLoaded(std::size_t count) override { loads.push_back(count); }
    } counter;
    list.addObserver(counter);
    Bytes content = encodedSchedule(severalEntries());
    decode(content);
    content.pop_back();
    decode(content);
    decode({});
    EXPECT_THAT(counter.loads, ElementsAre(3u));
}

} // namespace
