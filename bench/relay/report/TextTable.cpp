#include "bench/relay/report/TextTable.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <utility>

std::string numberText(double value, int decimals) {
    std::array<char, 64> text{};
    const int length = std::snprintf(text.data(), text.size(), "%.*f", decimals, value);
    return {text.data(), static_cast<std::size_t>(std::clamp(length, 0, 63))};
}

TextTable::TextTable(std::vector<std::string> heading, std::size_t columnsToTheLeft)
    : rows{std::move(heading)}, leftColumns(columnsToTheLeft) {}

void TextTable::addRow(std::vector<std::string> row) { rows.push_back(std::move(row)); }

void TextTable::print(std::ostream& out) const {
    std::vector<std::size_t> widths(rows.front().size());
    for (const auto& row : rows) {
        for (std::size_t column = 0; column < row.size(); ++column) {
            widths[column] = std::max(widths[column], row[column].size());
        }
    }
    for (const auto& row : rows) {
        std::string line;
        for (std::size_t column = 0; column < row.size(); ++column) {
            const std::string padding(widths[column] - row[column].size(), ' ');
            if (column > 0) line += "  ";
            line += column < leftColumns ? row[column] + padding : padding + row[column];
        }
        line.erase(line.find_last_not_of(' ') + 1);
        out << line << '\n';
        if (&row == &rows.front()) out << std::string(line.size(), '-') << '\n';
    }
}
