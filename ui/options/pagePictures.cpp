#include "ui/options/pagePictures.h"

#include "ui/common/look.h"

#include <QPainter>
#include <QPainterPath>

#include <array>
#include <utility>

namespace pagePictures {

namespace {

void drawLinesIn(QPainter& painter, const QColor& color, double width = 1.3) {
    painter.setPen(QPen(color, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(look::page);
}

void fillIn(QPainter& painter, const QColor& color) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
}

const QColor warm{214, 131, 31};
const QColor fresh{74, 150, 62};

}  // namespace

void paintSwitches(QPainter& painter) {
    constexpr std::array<std::pair<double, double>, 3> knobs{{{3.5, 10.5}, {8, 5.5}, {12.5, 9}}};
    for (const auto& [y, x] : knobs) {
        drawLinesIn(painter, look::accent);
        painter.drawLine(QPointF(1.5, y), QPointF(14.5, y));
        painter.drawEllipse(QPointF(x, y), 2, 2);
    }
}

void paintKey(QPainter& painter) {
    drawLinesIn(painter, warm, 1.6);
    painter.drawLine(QPointF(7, 9), QPointF(14, 2));
    painter.drawLine(QPointF(11.5, 4.5), QPointF(13.5, 6.5));
    painter.drawLine(QPointF(9.5, 6.5), QPointF(11, 8));
    painter.drawEllipse(QPointF(5, 11), 3.2, 3.2);
}

void paintClock(QPainter& painter) {
    drawLinesIn(painter, look::accent, 1.4);
    painter.drawEllipse(QPointF(8, 8), 6.3, 6.3);
    painter.drawLine(QPointF(8, 8), QPointF(8, 4));
    painter.drawLine(QPointF(8, 8), QPointF(10.8, 9.5));
}

void paintBell(QPainter& painter) {
    QPainterPath bell(QPointF(2.5, 12));
    bell.cubicTo(QPointF(5, 10), QPointF(3.5, 2.5), QPointF(8, 2.5));
    bell.cubicTo(QPointF(12.5, 2.5), QPointF(11, 10), QPointF(13.5, 12));
    bell.closeSubpath();
    drawLinesIn(painter, warm);
    painter.drawPath(bell);
    fillIn(painter, warm);
    painter.drawEllipse(QPointF(8, 13.8), 1.5, 1.2);
    painter.drawEllipse(QPointF(8, 1.8), 1, 1);
}

void paintTitleBar(QPainter& painter) {
    drawLinesIn(painter, look::accent);
    painter.drawRoundedRect(QRectF(1.5, 2.5, 13, 11), 1.5, 1.5);
    fillIn(painter, look::accent);
    painter.drawRect(QRectF(2, 3, 12, 3));
    drawLinesIn(painter, look::line, 1);
    painter.drawLine(QPointF(4, 8.7), QPointF(12, 8.7));
    painter.drawLine(QPointF(4, 11), QPointF(9, 11));
}

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
    fillIn(painter, warm);
    painter.drawEllipse(QPointF(5, 6.6), 1.4, 1.4);
    painter.drawChord(QRectF(2.8, 8.4, 4.4, 5), 0, 180 * 16);
    drawLinesIn(painter, look::line, 1);
    for (const double y : {6.3, 8.3, 10.3})
        painter.drawLine(QPointF(9, y), QPointF(12.5, y));
}

void paintColors(QPainter& painter) {
    const std::array<std::pair<QPointF, QColor>, 3> drops{
        {{{8, 5}, QColor(204, 60, 60)}, {{5, 10.2}, fresh}, {{11, 10.2}, look::accent}}};
    for (const auto& [middle, color] : drops) {
        painter.setPen(QPen(look::page, 0.8));
        painter.setBrush(color);
        painter.drawEllipse(middle, 3.6, 3.6);
    }
}

void paintGlass(QPainter& painter) {
    drawLinesIn(painter, warm, 2);
    painter.drawLine(QPointF(10, 10), QPointF(14, 14));
    drawLinesIn(painter, look::accent, 1.5);
    painter.drawEllipse(QPointF(6.7, 6.7), 4.7, 4.7);
}

void paintBrackets(QPainter& painter) {
    drawLinesIn(painter, look::accent, 1.7);
    painter.setBrush(Qt::NoBrush);
    painter.drawPolyline(QPolygonF{{5, 3.5}, {1.5, 8}, {5, 12.5}});
    painter.drawPolyline(QPolygonF{{11, 3.5}, {14.5, 8}, {11, 12.5}});
    drawLinesIn(painter, warm, 1.5);
    painter.drawLine(QPointF(8, 5.5), QPointF(8, 10.5));
    painter.drawLine(QPointF(6.4, 5.5), QPointF(9.6, 5.5));
}

void paintPaper(QPainter& painter) {
    drawLinesIn(painter, warm);
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

}  // namespace pagePictures
