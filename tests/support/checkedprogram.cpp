// A program that has damaged its heap crashes at its end. Linked to the scheduler itself in a checked build;
// without tools/wine --check-heap it does nothing.
#include "tests/support/checkedheap.h"

namespace {

class HeapWatch {
public:
    HeapWatch() = default;
    HeapWatch(const HeapWatch&) = delete;
    HeapWatch& operator=(const HeapWatch&) = delete;
    ~HeapWatch() {
        if (watching_ && (test::damagedHeaps() != 0 || test::takeDamagedBlocks() != 0))
            __builtin_trap();
    }

private:
    bool watching_ = test::watchHeap();
};

const HeapWatch watch;

} // namespace
