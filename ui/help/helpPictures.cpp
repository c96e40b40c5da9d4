#include "ui/help/helpPictures.h"

#include "ui/common/look.h"
#include "ui/common/pictures.h"

#include <QPainter>

#include <array>
#include <utility>

namespace helpPictures {

void paintNotes(QPainter& painter) {
    drawLinesIn(painter, look::accent, 1.5);
    painter.drawLine(QPointF(6, 12), QPointF(6, 3.5));
    painter.drawLine(QPointF(6, 3.5), QPointF(13, 2));
    painter.drawLine(QPointF(13, 2), QPointF(13, 10.5));
    fillIn(painter, look::accent);
    painter.drawEllipse(QPointF(4.2, 12.3), 2.3, 1.8);
    painter.drawEllipse(QPointF(11.2, 10.8), 2.3, 1.8);
}

void paintPlayer(QPainter& painter) {
    drawLinesIn(painter, look::accent, 1.4);
    painter.drawEllipse(QPointF(8, 8), 6.3, 6.3);
    fillIn(painter, look::accent);
    painter.drawPolygon(QPolygonF{{6.3, 4.8}, {11.3, 8}, {6.3, 11.2}});
}

void paintCard(QPainter& painter) {
    drawLinesIn(painter, look::accent);
    painter.drawRoundedRect(QRectF(1.5, 3, 13, 10), 1.5, 1.5);
    fillIn(painter, look::warm);
    painter.drawEllipse(QPointF(5, 6.6), 1.4, 1.4);
    painter.drawChord(QRectF(2.8, 8.4, 4.4, 5), 0, 180 * 16);
    drawLinesIn(painter, look::line, 1);
    for (const double y : {6.3, 8.3, 10.3})
        painter.drawLine(QPointF(9, y), QPointF(12.5, y));
}

void paintColors(QPainter& painter) {
    const std::array<std::pair<QPointF, QColor>, 3> drops{{{{8, 5}, QColor(204, 60, 60)},
                                                           {{5, 10.2}, QColor(74, 150, 62)},
                                                           {{11, 10.2}, look::accent}}};
    for (const auto& [middle, color] : drops) {
        painter.setPen(QPen(look::page, 0.8));
        painter.setBrush(color);
        painter.drawEllipse(middle, 3.6, 3.6);
    }
}

void paintGlass(QPainter& painter) {
    drawLinesIn(painter, look::warm, 2);
    painter.drawLine(QPointF(10, 10), QPointF(14, 14));
    drawLinesIn(painter, look::accent, 1.5);
    painter.drawEllipse(QPointF(6.7, 6.7), 4.7, 4.7);
}

void paintBrackets(QPainter& painter) {
    drawLinesIn(painter, look::accent, 1.7);
    painter.setBrush(Qt::NoBrush);
    painter.drawPolyline(QPolygonF{{5, 3.5}, {1.5, 8}, {5, 12.5}});
    painter.drawPolyline(QPolygonF{{11, 3.5}, {14.5, 8}, {11, 12.5}});
    drawLinesIn(painter, look::warm, 1.5);
    painter.drawLine(QPointF(8, 5.5), QPointF(8, 10.5));
    painter.drawLine(QPointF(6.4, 5.5), QPointF(9.6, 5.5));
}

void paintPaper(QPainter& painter) {
    drawLinesIn(painter, look::warm);
    painter.drawPolygon(QPolygonF{{2.5, 1.8}, {13.5, 1.8}, {13.5, 10.5}, {10, 14.2}, {2.5, 14.2}});
    painter.drawPolyline(QPolygonF{{13.5, 10.5}, {10, 10.5}, {10, 14.2}});
    drawLinesIn(painter, look::line, 1);
    for (const double y : {4.8, 7.0, 9.2})
        painter.drawLine(QPointF(5, y), QPointF(11, y));
}

void paintBullet(QPainter& painter) {
    fillIn(painter, look::accent);
    painter.drawPolygon(QPolygonF{{4.5, 3}, {12, 8}, {4.5, 13}});
}

}  // namespace helpPictures
