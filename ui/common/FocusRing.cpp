#include "ui/common/FocusRing.h"

#include "ui/common/look.h"

#include <QPainter>

FocusRing::FocusRing(QWidget* control) : QWidget(control) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    hide();
}

void FocusRing::paint(QPainter& painter, const QRectF& place) {
    constexpr double width = 1.5;
    constexpr double inside = width / 2;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(look::accent, width));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(place.adjusted(inside, inside, -inside, -inside), 4, 4);
}

void FocusRing::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    paint(painter, QRectF(rect()));
}
