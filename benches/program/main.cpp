// usage: bench.program [--all] [NAME...]
// Without names, runs all but idle. --all includes idle and measures longer.
#include "benches/program/programbenches.h"

#include <algorithm>
#include <string>
#include <vector>

int main(int argc, char* argv[]) {
    std::vector<std::string> named(argv + 1, argv + argc);
    const bool all = std::erase(named, "--all") > 0;
    const auto wanted = [&](const char* name) {
        return named.empty() || std::ranges::find(named, name) != named.end();
    };
    if (wanted("start"))
        bench::benchStarting();
    if (wanted("latency"))
        bench::benchLatency(all ? 20 : 10, all ? 10 : 4);
    if (wanted("many-runs"))
        bench::benchManyRuns();
    if (wanted("idle") && (all || !named.empty()))
        bench::benchIdling(all ? 300 : 30);
}
