#pragma once

#include <string>
#include <vector>

/// A movie that makes drawing do as much as it can of one kind of work.
struct WorstCase {
    std::string name;
    std::string file;
};

/// One for each kind of work that drawing knows. Most ask for more than a drawing may take; with a
/// divisor they ask for about that part of it.
[[nodiscard]] std::vector<WorstCase> worstCases(unsigned divisor = 1);
