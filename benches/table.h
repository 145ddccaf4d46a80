// The rows of the table that ./bench prints, one per line with tabs between the cells.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace bench {

struct Row {
    std::string what;
    std::string amount;
    double median = 0; ///< in `unit`
    double spread = 0; ///< between the first and the third quarter of the runs, as a part of the median
    double each = 0;   ///< of one thing of the amount; 0: says nothing
    std::string limit; ///< what it is held against
    double bound = 0;  ///< the limit's own median
    double ratio = 0;  ///< to the limit
    double wanted = 0; ///< the largest ratio that is good
    std::string unit = "s";
};

/// Prints the row at once, so that a long run shows what it has.
void print(const Row& row);

/// A count as the table shows it, for instance "1,000".
std::string grouped(std::size_t count);

/// Of a copy, so that the caller's stay in the order in which they were measured.
double medianOf(std::vector<double> values);
double spreadOf(std::vector<double> values);
/// The value below which this part of them lies.
double quantileOf(std::vector<double> values, double part);

} // namespace bench
