// What is measured of the whole program.
#pragma once

namespace bench {

void benchStarting();
/// Starts the program again and again, spread evenly over the phases of its tick.
void benchLatency(int starts, int runsPerStart);
void benchIdling(int seconds);
void benchCrowd();

} // namespace bench
