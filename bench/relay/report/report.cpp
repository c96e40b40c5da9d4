#include "bench/relay/report/report.h"

#include "bench/relay/report/goals.h"

#include <algorithm>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace {

const std::string nothing = "-";

/// Rows of text, printed in columns: the first ones to the left, the others to the right.
class TextTable {
public:
    TextTable(std::vector<std::string> heading, std::size_t columnsToTheLeft)
        : rows{std::move(heading)}, leftColumns(columnsToTheLeft) {}

    void addRow(std::vector<std::string> row) { rows.push_back(std::move(row)); }
    void print(std::ostream& out) const {
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

private:
    std::vector<std::vector<std::string>> rows;
    std::size_t leftColumns;
};

std::string valueText(const std::optional<double>& value, Figure figure) {
    return value ? numberText(*value, textOf(figure).decimals) : nothing;
}

std::string rangeText(const std::vector<double>& ratios) {
    if (ratios.empty()) return nothing;
    const auto [lowest, highest] = std::minmax_element(ratios.begin(), ratios.end());
    return numberText(*lowest, 2) + ".." + numberText(*highest, 2);
}

std::string verdictText(const Outcome& outcome) {
    switch (outcome.verdict) {
        case Verdict::Holds: return "holds";
        case Verdict::Missed: return outcome.value ? "MISSED" : "MISSED (failed)";
        case Verdict::NotMeasured: break;
    }
    return "not measured";
}

}  // namespace

void printFigures(std::ostream& out, const Results& results,
                  const std::vector<Contender>& contenders) {
    std::vector<std::string> heading{"figure", "unit"};
    for (const Contender& contender : contenders)
        heading.push_back(contender.name);
    TextTable table(std::move(heading), 2);
    for (int number = 0; number < figureCount; ++number) {
        const auto figure = static_cast<Figure>(number);
        if (!results.isAnnounced(figure)) continue;
        std::vector<std::string> row{textOf(figure).name, textOf(figure).unit};
        for (const Contender& contender : contenders) {
            row.push_back(valueText(results.value({figure, contender.id}), figure));
        }
        table.addRow(std::move(row));
    }
    table.print(out);
}

void printGoals(std::ostream& out, const Results& results) {
    TextTable table({"figure", "goal", "cobweave", "reference", "ratio", "range", "verdict"}, 2);
    std::map<Verdict, int> counts;
    for (const Goal& goal : allGoals()) {
        if (!results.isAnnounced(goal.figure)) continue;
        const Outcome outcome = judge(goal, results);
        ++counts[outcome.verdict];
        const Figure referenceFigure = goal.reference ? goal.reference->figure : goal.figure;
        table.addRow({textOf(goal.figure).name, describe(goal),
                      valueText(outcome.value, goal.figure),
                      valueText(outcome.referenceValue, referenceFigure),
                      outcome.ratios.empty() ? nothing : numberText(median(outcome.ratios), 2),
                      rangeText(outcome.ratios), verdictText(outcome)});
    }
    table.print(out);
    out << '\n'
        << counts[Verdict::Holds] << " goals hold, " << counts[Verdict::Missed] << " missed, "
        << counts[Verdict::NotMeasured] << " not measured\n";
}

void printNotes(std::ostream& out, const Results& results,
                const std::vector<Contender>& contenders) {
    for (const Contender& contender : contenders) {
        if (!contender.absence.empty()) {
            out << "absent: " << contender.name << ", " << contender.absence << '\n';
        }
    }
    for (const std::string& note : results.notes())
        out << "note: " << note << '\n';
}
