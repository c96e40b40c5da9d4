#pragma once

#include <QStyledItemDelegate>

#include <string>

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
