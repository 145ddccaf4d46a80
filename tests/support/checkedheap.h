// Whether anything has written where it should not, in a program that tools/wine --check-heap runs.
#pragma once

namespace test {

/// Whether the platform surrounds blocks with a pattern at all.
bool heapIsChecked();

/// Has the runtime library look at each block that it gives back. False when the platform surrounds none.
bool watchHeap();

/// How many heaps of the process are damaged now: behind or before a block, or in one that has been freed.
unsigned damagedHeaps();

/// How many damaged blocks the runtime library was given back since this was asked for last.
unsigned takeDamagedBlocks();

} // namespace test
