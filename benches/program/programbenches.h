#pragma once

namespace bench {

void benchStarting();
/// Starts the program `starts` times, evenly spread over the phase of its tick.
void benchLatency(int starts, int runsPerStart);
void benchIdling(int seconds);
void benchCrowd();

} // namespace bench
