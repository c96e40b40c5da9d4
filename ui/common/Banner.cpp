#include "ui/common/Banner.h"

#include "ui/common/look.h"

#include <QApplication>
#include <QIcon>
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
