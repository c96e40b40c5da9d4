#pragma once

#include <cstddef>
#include <ostream>
#include <string>
#include <vector>

/// `value` with so many digits behind the point.
[[nodiscard]] std::string numberText(double value, int decimals);

/// Rows of text, printed in columns: the first ones to the left, the others to the right.
class TextTable {
public:
    explicit TextTable(std::vector<std::string> heading, std::size_t columnsToTheLeft);

    void addRow(std::vector<std::string> row);
    void print(std::ostream& out) const;

private:
    std::vector<std::vector<std::string>> rows;
    std::size_t leftColumns;
};
