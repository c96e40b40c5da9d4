#include "ui/log/LogLines.h"

#include "ui/common/look.h"
#include "ui/common/shownText.h"

#include <QApplication>
#include <QFontMetrics>

#include <algorithm>

void LogLines::clear() {
    beginResetModel();
    lines.clear();
    published = 0;
    endResetModel();
}

void LogLines::publish() {
    if (published == lines.size()) return;
    beginInsertRows({}, static_cast<int>(published), static_cast<int>(lines.size()) - 1);
    published = lines.size();
    endInsertRows();
}

std::string LogLines::at(int index) const {
    const auto place = static_cast<std::size_t>(index);
    return index >= 0 && place < published ? lines[place] : std::string();
}

int LogLines::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(published);
}

QVariant LogLines::data(const QModelIndex& index, int role) const {
    if (role != Qt::DisplayRole) return {};
    return shownLine(at(index.row()));
}

void LogLineDelegate::makeRoomFor(const std::string& line) {
    const QFontMetrics metrics(QApplication::font());
    widest = std::max(widest, metrics.horizontalAdvance(shownLine(line)));
}

QSize LogLineDelegate::sizeHint(const QStyleOptionViewItem& option,
                                const QModelIndex& /*index*/) const {
    return {widest + 2 * look::gap, option.fontMetrics.height() + 3};
}
