#include "bench/relay/report/Results.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

double percentile(std::vector<double> values, double share) {
    std::sort(values.begin(), values.end());
    const double rank = std::ceil(share * static_cast<double>(values.size()));
    return values[static_cast<std::size_t>(std::max(rank, 1.0)) - 1];
}

double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    const std::size_t half = values.size() / 2;
    return values.size() % 2 != 0 ? values[half] : (values[half - 1] + values[half]) / 2;
}

void Results::add(Cell cell, int repetition, double value) {
    announce(cell.figure);
    values[cell][repetition].push_back(value);
}

void Results::discard(Cell cell) { values.erase(cell); }

std::optional<double> Results::value(Cell cell) const {
    std::vector<double> medians;
    for (const auto& [repetition, value] : byRepetition(cell))
        medians.push_back(value);
    if (medians.empty()) return {};
    return median(medians);
}

std::vector<double> Results::ratios(Cell cell, Cell reference) const {
    const auto references = byRepetition(reference);
    std::vector<double> result;
    for (const auto& [repetition, value] : byRepetition(cell)) {
        const auto found = references.find(repetition);
        if (found != references.end() && found->second > 0) result.push_back(value / found->second);
    }
    return result;
}

std::map<int, double> Results::byRepetition(Cell cell) const {
    std::map<int, double> result;
    const auto found = values.find(cell);
    if (found == values.end()) return result;
    for (const auto& [repetition, all] : found->second)
        result[repetition] = median(all);
    return result;
}
