#pragma once

#include "bench/relay/contenders/Contender.h"
#include "bench/relay/report/Figure.h"

#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

/// The value below which `share` of all values lie; `values` must not be empty.
[[nodiscard]] double percentile(std::vector<double> values, double share);

/// The middle value, or the mean of the two in the middle; `values` must not be empty.
[[nodiscard]] double median(std::vector<double> values);

/// What one contender did in one figure.
struct Cell {
    Figure figure;
    ContenderId contender;

    auto operator<=>(const Cell&) const = default;
};

/// All measured values by figure, contender and repetition, and what went wrong.
class Results {
public:
    /// Somebody is measured in this figure, even if that should fail.
    void announce(Figure figure) { announced.insert(figure); }
    [[nodiscard]] bool isAnnounced(Figure figure) const { return announced.contains(figure); }

    /// Several values of one repetition stand for their median.
    void add(Cell cell, int repetition, double value);
    /// Forgets a figure, so that a contender that failed once does not shine with the rest.
    void discard(Cell cell);

    /// The median of the repetitions; nothing when there are none.
    [[nodiscard]] std::optional<double> value(Cell cell) const;
    /// The ratios within each repetition that has both.
    [[nodiscard]] std::vector<double> ratios(Cell cell, Cell reference) const;

    /// Prints a remark below the tables.
    void addNote(std::string note) { allNotes.push_back(std::move(note)); }
    /// In the order in which they came.
    [[nodiscard]] const std::vector<std::string>& notes() const { return allNotes; }

private:
    [[nodiscard]] std::map<int, double> byRepetition(Cell cell) const;

    std::map<Cell, std::map<int, std::vector<double>>> values;
    std::set<Figure> announced;
    std::vector<std::string> allNotes;
};
