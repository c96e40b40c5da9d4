#include "ui/common/pictures.h"

#include "ui/common/look.h"

#include <QPainter>

namespace pictures {

namespace {

QPen pen(const QColor& color, double width) {
    return {color, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin};
}

}  // namespace

void paintSheets(QPainter& painter) {
    painter.setPen(pen(look::accent, 1.2));
    painter.setBrush(look::page);
    painter.drawRoundedRect(QRectF(2, 2, 8, 10), 1, 1);
    painter.drawRoundedRect(QRectF(6, 5, 8, 10), 1, 1);
    for (const double y : {8.5, 10.5, 12.5})
        painter.drawLine(QPointF(8, y), QPointF(12, y));
}

void paintSweep(QPainter& painter) {
    painter.setPen(pen(look::accent, 1.6));
    painter.drawLine(QPointF(13.5, 2), QPointF(9, 7.5));
    painter.setPen(pen(look::accent, 1.2));
    painter.setBrush(look::page);
    painter.drawPolygon(QPolygonF{{6.5, 6.5}, {10.5, 9.5}, {8.5, 14.5}, {2, 13}, {4, 10.5}});
    painter.drawLine(QPointF(5, 13.5), QPointF(7, 10.5));
}

void paintCross(QPainter& painter) {
    painter.setPen(pen(look::accent, 2));
    painter.drawLine(QPointF(4, 4), QPointF(12, 12));
    painter.drawLine(QPointF(12, 4), QPointF(4, 12));
}

}  // namespace pictures
