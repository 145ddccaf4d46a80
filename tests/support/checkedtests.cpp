// Fails every test that leaves a heap damaged, or gives a damaged block back. Linked to all tests of a
// checked build.
#include "tests/support/checkedheap.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>

namespace {

class HeapCheck : public testing::EmptyTestEventListener {
    void OnTestProgramStart(const testing::UnitTest&) override {
        if (test::watchHeap())
            return;
        std::fputs("The heap is not checked: run this by tools/wine --check-heap.\n", stderr);
        std::_Exit(1);
    }

    void OnTestEnd(const testing::TestInfo&) override {
        EXPECT_EQ(test::damagedHeaps(), 0U) << "something was written where it should not";
        EXPECT_EQ(test::takeDamagedBlocks(), 0U) << "something was written behind or before a block";
    }
};

[[maybe_unused]] const bool listens = [] {
    testing::UnitTest::GetInstance()->listeners().Append(new HeapCheck); // theirs to delete
    return true;
}();

} // namespace
