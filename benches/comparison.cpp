#include "benches/comparison.h"

#include "benches/table.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace bench {
namespace {

constexpr int rounds = 15;
// Short runs are repeated for about this time, because a single one would be lost in the noise.
constexpr double secondsPerRound = 0.05;
constexpr int mostRepetitions = 10000;

int repetitionsFor(double once) {
    return std::clamp(static_cast<int>(secondsPerRound / std::max(once, 1e-9)), 1, mostRepetitions);
}

double averageOf(const Timed& timed, int repetitions) {
    double sum = 0;
    for (int i = 0; i < repetitions; ++i)
        sum += timed();
    return sum / repetitions;
}

} // namespace

void compare(const Comparison& comparison, const Timed& subject, const Timed& limit) {
    // These first calls also warm up the caches and the heap.
    const int repetitions = repetitionsFor(std::min(subject(), limit()));
    std::vector<double> subjects;
    std::vector<double> limits;
    std::vector<double> ratios;
    for (int round = 0; round < rounds; ++round) {
        std::pair<double, double> times;
        // The order alternates, because each measurement affects the caches and the heap for the next one.
        if (round % 2 == 0)
            times.first = averageOf(subject, repetitions);
        times.second = averageOf(limit, repetitions);
        if (round % 2 != 0)
            times.first = averageOf(subject, repetitions);
        const double allowance = comparison.allowance ? averageOf(comparison.allowance, repetitions) : 0;
        subjects.push_back(times.first);
        limits.push_back(times.second);
        ratios.push_back((times.first - allowance) / times.second);
    }
    const double median = medianOf(subjects);
    print({comparison.what, grouped(comparison.count) + ' ' + comparison.things, median, spreadOf(subjects),
           comparison.count == 0 ? 0 : median / static_cast<double>(comparison.count), comparison.limit,
           medianOf(limits), medianOf(ratios), comparison.wanted});
}

} // namespace bench
