#include "ui/options/optionPictures.h"

#include "ui/common/look.h"
#include "ui/common/pictures.h"

#include <QApplication>
#include <QIcon>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>

#include <array>
#include <utility>

namespace optionPictures {

namespace {

void write(QPainter& painter, const QRectF& place, const QColor& color, const char* text,
           int size) {
    QFont font = QApplication::font();
    font.setPixelSize(size);
    painter.setFont(font);
    painter.setPen(color);
    painter.drawText(place, Qt::AlignLeft | Qt::AlignVCenter, text);
}

/// A window with an empty title bar of the given height.
void paintFrame(QPainter& painter, const QRectF& place, double barHeight) {
    painter.setPen(QPen(look::line, 1));
    painter.setBrush(look::page);
    painter.drawRoundedRect(place, 4, 4);
    const QRectF bar = place.adjusted(1, 1, -1, barHeight - place.height());
    QLinearGradient ground(bar.topLeft(), bar.bottomLeft());
    ground.setColorAt(0, look::bandEnd);
    ground.setColorAt(1, QColor(184, 208, 233));
    painter.setPen(Qt::NoPen);
    painter.setBrush(ground);
    painter.drawRoundedRect(bar, 3, 3);
    painter.setPen(QPen(look::link, 1.2, Qt::SolidLine, Qt::RoundCap));
    const QPointF middle(bar.right() - 9, bar.center().y());
    painter.drawLine(middle + QPointF(-2.5, -2.5), middle + QPointF(2.5, 2.5));
    painter.drawLine(middle + QPointF(2.5, -2.5), middle + QPointF(-2.5, 2.5));
}

void paintContact(QPainter& painter, QPointF corner, double width) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(look::line);
    painter.drawEllipse(corner + QPointF(4, 4), 3, 3);
    painter.setBrush(look::bandEnd);
    painter.drawRoundedRect(QRectF(corner + QPointF(12, 2), QSizeF(width, 4)), 2, 2);
}

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
    drawLinesIn(painter, look::warm, 1.6);
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
    drawLinesIn(painter, look::warm);
    painter.drawPath(bell);
    fillIn(painter, look::warm);
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

void paintMessengerWindow(QPainter& painter) {
    paintFrame(painter, QRectF(0.5, 0.5, 131, 56), 18);
    write(painter, QRectF(6, 1, 108, 18), look::text, "Suggested signin...", 10);
    paintContact(painter, {8, 25}, 70);
    paintContact(painter, {8, 37}, 52);
}

void paintToolTip(QPainter& painter) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(184, 208, 233));
    painter.drawRoundedRect(QRectF(0, 28, 132, 22), 3, 3);
    painter.setPen(QPen(look::line, 1));
    painter.setBrush(QColor(255, 253, 231));
    painter.drawRoundedRect(QRectF(1.5, 2.5, 129, 19), 3, 3);
    write(painter, QRectF(8, 2, 124, 20), look::text, "Suggested progress: 30%", 10);
    QApplication::windowIcon().paint(&painter, QRect(76, 31, 16, 16));
    write(painter, QRectF(99, 28, 32, 22), look::text, "12:30", 10);
}

void paintWindow(QPainter& painter) {
    paintFrame(painter, QRectF(0.5, 0.5, 319, 95), 25);
    QApplication::windowIcon().paint(&painter, QRect(7, 5, 16, 16));
    paintContact(painter, {12, 36}, 150);
    paintContact(painter, {12, 52}, 110);
    paintContact(painter, {12, 68}, 130);
}

}  // namespace optionPictures
