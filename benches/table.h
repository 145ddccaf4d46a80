// Rows of the table that ./bench prints, with tabs between the cells.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace bench {

struct Row {
    std::string what;
    std::string amount;
    double median = 0; ///< in `unit`
    double spread = 0; ///< interquartile range divided by the median
    double each = 0;   ///< per item; 0 if not shown
    std::string limit; ///< name of the lower bound
    double bound = 0;  ///< median of the lower bound
    double ratio = 0;  ///< to the lower bound
    double wanted = 0; ///< largest acceptable ratio
    std::string unit = "s";
};

/// Flushes, so that a long run shows its progress.
void print(const Row& row);

/// With thousands separators: "1,000".
std::string grouped(std::size_t count);

double medianOf(std::vector<double> values);
double spreadOf(std::vector<double> values);
/// `part` is from 0 to 1.
double quantileOf(std::vector<double> values, double part);

} // namespace bench
