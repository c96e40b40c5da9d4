#pragma once

#include <QAbstractListModel>
#include <QStyledItemDelegate>

#include <cstddef>
#include <string>
#include <vector>

/// The lines of the log. New ones are there at once, and the window that shows them hears of them
/// when it is told to, many at a time: it lays out all of its lines anew for each.
class LogLines : public QAbstractListModel {
public:
    void append(std::string line) { lines.push_back(std::move(line)); }
    void clear();

    /// Tells the window of what was appended since the last time.
    void publish();
    [[nodiscard]] bool isPublished() const { return published == lines.size(); }

    /// The line at `index`; nothing behind the end.
    [[nodiscard]] std::string at(int index) const;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    /// Nothing: a letter typed on the list would search all lines, and hold up the rest meanwhile.
    [[nodiscard]] QModelIndexList match(const QModelIndex& /*start*/, int /*role*/,
                                        const QVariant& /*value*/, int /*hits*/,
                                        Qt::MatchFlags /*flags*/) const override {
        return {};
    }

private:
    std::vector<std::string> lines;
    std::size_t published = 0;
};

/// Gives all lines of the log the same size, which holds the widest of them: asking each line for
/// its own would make a long log slow.
class LogLineDelegate : public QStyledItemDelegate {
public:
    void makeRoomFor(const std::string& line);
    /// All lines are gone.
    void forget() { widest = 0; }

    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option,
                                 const QModelIndex& index) const override;

private:
    int widest = 0;
};
