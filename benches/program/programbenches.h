// What is measured of the whole program.
#pragma once

namespace bench {

void benchStarting();
/// `starts` of the program with ten runs each, spread evenly over the phases of its tick.
void benchLatency(int starts);
void benchIdling(int seconds);
void benchCrowd();

} // namespace bench
