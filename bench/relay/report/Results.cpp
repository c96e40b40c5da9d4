#include "bench/relay/report/Results.h"

#include "bench/relay/report/statistics.h"

void Results::add(Cell cell, int repetition, double value) {
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
