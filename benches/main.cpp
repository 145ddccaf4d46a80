// usage: bench.model [NAME...]
#include "benches/benches.h"

#include <algorithm>
#include <array>
#include <string>
#include <vector>

namespace {

struct Bench {
    const char* name;
    void (*run)();
};

constexpr std::array<Bench, 7> benches = {{
    {"load", bench::benchLoading},
    {"save", bench::benchSaving},
    {"tick", bench::benchTicks},
    {"next-run", bench::benchNextRuns},
    {"cells", bench::benchCellTexts},
    {"sort", bench::benchSorting},
    {"delete", bench::benchDeletion},
}};

} // namespace

int main(int argc, char* argv[]) {
    const std::vector<std::string> named(argv + 1, argv + argc);
    for (const Bench& bench : benches)
        if (named.empty() || std::ranges::find(named, bench.name) != named.end())
            bench.run();
}
