#include "benches/table.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace bench {
namespace {

/// Seconds get an SI prefix that leaves one to three digits before the point.
std::string scaled(double value, const std::string& unit) {
    static constexpr std::array<const char*, 4> prefixes = {"", "m", "u", "n"};
    std::size_t prefix = 0;
    for (; unit == "s" && value != 0 && value < 1 && prefix + 1 < prefixes.size(); ++prefix)
        value *= 1000;
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%.3g %s%s", value, prefixes[prefix], unit.c_str());
    return text.data();
}

double quantile(const std::vector<double>& sorted, double part) {
    const double place = part * static_cast<double>(sorted.size() - 1);
    const auto below = static_cast<std::size_t>(place);
    const std::size_t above = std::min(below + 1, sorted.size() - 1);
    return sorted[below] + (sorted[above] - sorted[below]) * (place - static_cast<double>(below));
}

} // namespace

void print(const Row& row) {
    std::printf("%s\t%s\t%s\t%.0f %%\t%s\t%s\t%s\t%.2f\t%.2f%s\n", row.what.c_str(), row.amount.c_str(),
                scaled(row.median, row.unit).c_str(), row.spread * 100,
                row.each == 0 ? "" : scaled(row.each, row.unit).c_str(), row.limit.c_str(),
                scaled(row.bound, row.unit).c_str(), row.ratio, row.wanted,
                row.ratio <= row.wanted ? "" : " missed");
    std::fflush(stdout);
}

std::string grouped(std::size_t count) {
    const std::string digits = std::to_string(count);
    std::string text;
    for (std::size_t i = 0; i < digits.size(); ++i) {
        if (i > 0 && (digits.size() - i) % 3 == 0)
            text += ',';
        text += digits[i];
    }
    return text;
}

double medianOf(std::vector<double> values) {
    std::ranges::sort(values);
    return quantile(values, 0.5);
}

double quantileOf(std::vector<double> values, double part) {
    std::ranges::sort(values);
    return quantile(values, part);
}

double spreadOf(std::vector<double> values) {
    std::ranges::sort(values);
    return (quantile(values, 0.75) - quantile(values, 0.25)) / quantile(values, 0.5);
}

} // namespace bench
