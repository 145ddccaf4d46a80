#include "scheduler/model/schedulecodec.h"
#include "tests/scheduler/model/decodedschedule.h"
#include "tests/support/encodedschedule.h"
#include "tests/support/filledentry.h"

#include <gmock/gmock.h>

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace test;
using scheduler::ScheduledProject;
using namespace std::string_view_literals;

class ScheduleCodec : public DecodedSchedule {
protected:
    const std::vector<ScheduledProject> several{withPath("C:\\a.kra"), filledEntry(), ScheduledProject()};
};

std::string text(const Bytes& content) {
    return {reinterpret_cast<const char*>(content.data()), content.size()};
}

constexpr std::string_view filledRecord = "\x11\0\0\0C:\\Sites\\news.kra" // path
                                          "\x08\0\0\0"
                                          "2 errors"         // lastResult
                                          "\x14\x13\x12\x11" // lastRun
                                          "\x04\0\0\0"       // kind
                                          "\x24\x23\x22\x21" // time
                                          "\xFE\xFF\xFF\xFF" // minutes
                                          "\x34\x33\x32\x31" // afterIndex
                                          "\0\x01\0\0\x01\x01\0"
                                          "\x1F\0\0\0"            // dayOfMonth
                                          "\x03\0\0\0"            // runCommand
                                          "\x0B\0\0\0Office line" // dialupEntry
                                          "\x5A\0\0\0"            // timeLimitMinutes
                                          "\x01\x02\x03"          // disconnectWhenDone, disabled, running
                                          "\x44\x43\x42\x41"      // waitingSince
                                          "\x54\x53\x52\x51"      // runStart
                                          "\x64\x63\x62\x61"      // runNumber
                                          "\xFF\xFF\xFF\x7F"      // nextRun
                                          "\xF4\xF3\xF2\xF1"      // retryLimit
                                          "\xE4\xE3\xE2\xE1"      // retriesDone
                                          "\x74\x73\x72\x71"sv;   // retryIntervalMinutes

TEST_F(ScheduleCodec, WritesTheExactBytesOfHeaderAndRecords) {
    const std::string magic("\x1C\xC7\x46\0", 4);
    EXPECT_EQ(text(encodedSchedule({})), magic + std::string(4, '\0'));
    EXPECT_EQ(encodedSchedule(std::vector<ScheduledProject>(5)).size(), headerSize + 5 * emptyRecordSize);
    const std::string two = magic + "\x02" + std::string(3, '\0');
    EXPECT_EQ(text(encodedSchedule(std::vector(2, filledEntry()))),
              two + std::string(filledRecord) + std::string(filledRecord));
}

TEST_F(ScheduleCodec, WritesPiecesThatFormTheWholeFile) {
    std::vector<ScheduledProject> entries = several;
    entries.push_back(filledEntry());
    entries.back().lastResult = std::string(300, 'x'); // longer than any buffer but the last
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

TEST_F(ScheduleCodec, StopsAtTheFirstRefusedPiece) {
    // One buffer is larger than a record, the other is smaller.
    for (const std::size_t size : {100U, 8U})
        for (const std::size_t count : {1000U, 0U})
            for (const int accepted : {0, 1, 5}) {
                Bytes buffer(size);
                int pieces = 0;
                const bool whole = scheduler::encodeSchedule(
                    std::vector<ScheduledProject>(count), buffer,
                    [&](std::span<const std::byte>) { return pieces++ < accepted; });
                EXPECT_EQ(whole, count == 0 && accepted > 0) << size << ", " << accepted;
                EXPECT_EQ(pieces, count == 0 ? 1 : accepted + 1) << size;
            }
}

TEST_F(ScheduleCodec, ReadsOnlyTheGivenMagicOrAnyForZero) {
    EXPECT_FALSE(decode(encodedSchedule(several), 1));
    EXPECT_TRUE(list.empty());
    Bytes foreign = encodedSchedule(several);
    foreign[2] = std::byte{0x47};
    EXPECT_TRUE(decode(foreign, 0));
    EXPECT_EQ(entriesOf(list), several);
}

TEST_F(ScheduleCodec, NotifiesObserversOfSuccessOnly) {
    struct Counter : scheduler::ScheduleObserver {
        std::vector<std::size_t> loads;
        void onEntryInserted(std::size_t, bool) override { ADD_FAILURE(); }
        void onEntriesLoaded(std::size_t count) override { loads.push_back(count); }
    } counter;
    list.addObserver(counter);
    Bytes content = encodedSchedule(several);
    decode(content);
    content.pop_back();
    decode(content);
    decode({});
    EXPECT_THAT(counter.loads, testing::ElementsAre(3u));
}

} // namespace
