#include "lib/base/opsys.h"
#include "lib/base/paths.h"
#include "lib/base/processes.h"
#include "tests/support/checkedheap.h"
#include "tests/support/patience.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace {

/// Writes beyond what it was given, and back again, unknown to the compiler.
class StrayByte {
public:
    explicit StrayByte(char* place) : place_(place), before_(*place_) {
        *place_ = static_cast<char>(~before_);
    }
    StrayByte(const StrayByte&) = delete;
    StrayByte& operator=(const StrayByte&) = delete;
    ~StrayByte() { *place_ = before_; }

private:
    volatile char* place_;
    char before_;
};

char* block(std::size_t size) {
    char* volatile given = static_cast<char*>(std::malloc(size));
    return given;
}

TEST(CheckedHeap, FindsWhatIsWrittenBehindABlock) {
    for (const std::size_t size : {1U, 13U, 16U, 1000U, 100'000U}) {
        char* const given = block(size);
        {
            const StrayByte stray(given + size);
            EXPECT_EQ(test::damagedHeaps(), 1U) << size;
        }
        EXPECT_EQ(test::damagedHeaps(), 0U) << size;
        std::free(given);
    }
}

TEST(CheckedHeap, FindsWhatIsWrittenBehindABlockThatIsFreedSince) {
    char* const given = block(13);
    *static_cast<volatile char*>(given + 13) = 'x';
    std::free(given);
    EXPECT_EQ(test::takeDamagedBlocks(), 1U);
    EXPECT_EQ(test::takeDamagedBlocks(), 0U);
}

TEST(CheckedHeap, FindsWhatIsWrittenIntoAFreedBlock) {
    char* volatile given = block(100);
    char* const place = given + 50;
    std::free(given);
    const StrayByte stray(place);
    EXPECT_EQ(test::damagedHeaps(), 1U);
}

std::uint32_t endOfProgram(const std::string& arguments) {
    const std::string program = base::directoryOf(base::executablePath()) + "support.strayprogram.exe";
    return base::runProcessAndWait("\"" + program + "\" " + arguments, SW_HIDE, "", test::patience);
}

TEST(CheckedHeap, AProgramThatHasDamagedItCrashesAtItsEnd) {
    EXPECT_EQ(endOfProgram(""), 0U);
    EXPECT_EQ(endOfProgram("stray"), STATUS_ILLEGAL_INSTRUCTION);
}

} // namespace
