#pragma once

#include "ui/common/look.h"

#include <QAbstractItemModel>
#include <QPainter>
#include <QStyledItemDelegate>

/// Draws the rows of all lists: they have one height, are as wide as the list, and have a frame for
/// the keyboard only when they are selected too. A list that gets the focus makes its first row the
/// current one, and a frame would make it look chosen.
class RowDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option,
                                 const QModelIndex& /*index*/) const override {
        constexpr int air = 5;
        return {0, option.fontMetrics.height() + air};
    }

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
        QStyledItemDelegate::initStyleOption(option, index);
        const bool isSelected = option->state.testFlag(QStyle::State_Selected);
        if (!isSelected) option->state &= ~QStyle::State_HasFocus;
    }
};

/// A list that says, while it is empty, what fills it.
template <typename List>
class Hinted : public List {
public:
    using List::List;

    /// The text that an empty list shows, and that assistive programs read.
    void setHint(const QString& newHint) {
        hint = newHint;
        this->setAccessibleDescription(hint);
    }

protected:
    void paintEvent(QPaintEvent* event) override {
        List::paintEvent(event);
        if (this->model() != nullptr && this->model()->rowCount() > 0) return;
        constexpr int margin = 2 * look::gap;
        QPainter painter(this->viewport());
        painter.setPen(look::hint);
        painter.drawText(this->viewport()->rect().adjusted(margin, 0, -margin, 0),
                         Qt::AlignCenter | Qt::TextWordWrap, hint);
    }

private:
    QString hint;
};
