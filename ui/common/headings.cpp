#include "ui/common/headings.h"

#include "ui/common/look.h"

#include <QApplication>
#include <QIcon>
#include <QLinearGradient>
#include <QPainter>

void Banner::setText(const QString& newSubject) {
    subject = newSubject;
    setAccessibleName(subject);
    update();
}

void Banner::paintEvent(QPaintEvent* /*event*/) {
    constexpr int iconSize = 32;
    QPainter painter(this);
    look::paintBand(painter, rect());
    const QRect icon(2 * look::gap, (height() - iconSize) / 2, iconSize, iconSize);
    QApplication::windowIcon().paint(&painter, icon);

    QFont large = font();
    large.setPixelSize(20);
    painter.setFont(large);
    painter.setPen(look::text);
    painter.drawText(rect().adjusted(icon.right() + 2 * look::gap, 0, 0, 0), Qt::AlignVCenter,
                     subject);
    painter.setPen(look::line);
    painter.drawLine(rect().bottomLeft(), rect().bottomRight());
}

void PageTitle::setSubject(const QString& newSubject, Drawing newDrawing) {
    subject = newSubject;
    drawing = newDrawing;
    setAccessibleName(subject);
    update();
}

void PageTitle::paintEvent(QPaintEvent* /*event*/) {
    constexpr double iconSize = 24;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QLinearGradient ground(QPointF(0, 0), QPointF(width(), 0));
    ground.setColorAt(0, look::bandEnd);
    ground.setColorAt(1, look::page);
    painter.setPen(Qt::NoPen);
    painter.setBrush(ground);
    painter.drawRect(rect());
    ground.setColorAt(0, look::line);
    painter.setBrush(ground);
    painter.drawRect(QRectF(0, height() - 2, width(), 2));

    QFont large = font();
    large.setPixelSize(17);
    large.setBold(true);
    painter.setFont(large);
    painter.setPen(look::text);
    painter.drawText(rect().adjusted(46, 0, 0, 0), Qt::AlignVCenter, subject);

    painter.translate(12, (height() - iconSize) / 2);
    painter.scale(iconSize / 16, iconSize / 16);
    if (drawing != nullptr) drawing(painter);
}
