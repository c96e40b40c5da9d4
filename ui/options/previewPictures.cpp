#include "ui/options/previewPictures.h"

#include "ui/common/look.h"

#include <QApplication>
#include <QIcon>
#include <QLinearGradient>
#include <QPainter>

namespace previewPictures {

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

}  // namespace previewPictures
