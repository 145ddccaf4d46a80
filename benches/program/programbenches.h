#pragma once

namespace bench {

void benchStarting();
/// Starts the program `starts` times, with evenly spaced phases of its timer.
void benchLatency(int starts, int runsPerStart);
void benchIdling(int seconds);
void benchManyRuns();

} // namespace bench
