#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

/// The value below which `share` of all values lie; `values` must not be empty.
[[nodiscard]] inline double percentile(std::vector<double> values, double share) {
    std::sort(values.begin(), values.end());
    const double rank = std::ceil(share * static_cast<double>(values.size()));
    return values[static_cast<std::size_t>(std::max(rank, 1.0)) - 1];
}

/// The middle value, or the mean of the two in the middle; `values` must not be empty.
[[nodiscard]] inline double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    const std::size_t half = values.size() / 2;
    return values.size() % 2 != 0 ? values[half] : (values[half - 1] + values[half]) / 2;
}
