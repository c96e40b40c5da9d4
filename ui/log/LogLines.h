#pragma once

#include <QAbstractListModel>
#include <QStyledItemDelegate>

#include <cstddef>
#include <string>
#include <vector>

/// The lines of the log. A list lays out all of its lines anew at each change, so new lines reach
/// it many at a time, when they are published.
class LogLines : public QAbstractListModel {
public:
    /// Adds a line at the end, which no list shows before `publish`.
    void append(std::string line) { lines.push_back(std::move(line)); }
    /// Removes all lines, published or not.
    void clear();
    /// Shows what was appended since the last time.
    void publish();

    /// The published line at `index`, as it was appended; empty where there is none.
    [[nodiscard]] std::string at(int index) const;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    /// Finds nothing: a letter typed on the list would search all lines, and block the program
    /// meanwhile.
    [[nodiscard]] QModelIndexList match(const QModelIndex& /*start*/, int /*role*/,
                                        const QVariant& /*value*/, int /*hits*/,
                                        Qt::MatchFlags /*flags*/) const override {
        return {};
    }

private:
    std::vector<std::string> lines;
    std::size_t published = 0;
};

/// Gives all lines of the log the size of the widest: asking each line for its own would make a
/// long log slow.
class LogLineDelegate : public QStyledItemDelegate {
public:
    /// Makes all lines wide enough for this one.
    void makeRoomFor(const std::string& line);
    /// Forgets all widths, for a list that is empty.
    void reset() { widest = 0; }

    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option,
                                 const QModelIndex& index) const override;

private:
    int widest = 0;
};
