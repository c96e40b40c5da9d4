#include "ui/common/lists.h"

QSize RowDelegate::sizeHint(const QStyleOptionViewItem& option,
                            const QModelIndex& /*index*/) const {
    constexpr int air = 5;
    return {0, option.fontMetrics.height() + air};
}

void RowDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
    QStyledItemDelegate::initStyleOption(option, index);
    if (!option->state.testFlag(QStyle::State_Selected)) option->state &= ~QStyle::State_HasFocus;
}
