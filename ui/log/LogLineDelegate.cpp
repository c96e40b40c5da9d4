#include "ui/log/LogLineDelegate.h"

#include "ui/common/look.h"
#include "ui/common/shownText.h"

#include <QApplication>
#include <QFontMetrics>

#include <algorithm>

void LogLineDelegate::makeRoomFor(const std::string& line) {
    const QFontMetrics metrics(QApplication::font());
    widest = std::max(widest, metrics.horizontalAdvance(shownLine(line)));
}

QSize LogLineDelegate::sizeHint(const QStyleOptionViewItem& option,
                                const QModelIndex& /*index*/) const {
    return {widest + 2 * look::gap, option.fontMetrics.height() + 3};
}
