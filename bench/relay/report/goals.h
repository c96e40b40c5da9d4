#pragma once

#include "bench/relay/report/Results.h"

#include <optional>
#include <string>
#include <vector>

/// On which side of its limit a goal holds; the limit itself holds.
enum class Bound { AtMost, AtLeast };

/// What the program under test is to reach in one figure: a value, or a ratio to another contender
/// or to another figure of its own.
struct Goal {
    Figure figure;
    Bound bound;
    double limit;
    std::optional<Cell> reference;
    std::string referenceName;
};

/// What became of a goal. A figure in which the program failed is missed.
enum class Verdict { Holds, Missed, NotMeasured };

/// A verdict, with what it stands on.
struct Outcome {
    Verdict verdict;
    std::optional<double> value;
    std::optional<double> referenceValue;
    /// All ratios of the repetitions; empty for a goal without a reference.
    std::vector<double> ratios;
};

/// In the order of the table.
[[nodiscard]] std::vector<Goal> allGoals();

/// By the median of the ratios, or by the value where there is no reference.
[[nodiscard]] Outcome judge(const Goal& goal, const Results& results);

/// For instance "at most 1.15 of floor".
[[nodiscard]] std::string describe(const Goal& goal);
