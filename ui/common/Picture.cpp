#include "ui/common/Picture.h"

#include <QPainter>

void Picture::setDrawing(pictures::Drawing newDrawing, QSize newGround) {
    drawing = newDrawing;
    ground = newGround;
    update();
}

void Picture::paintEvent(QPaintEvent* /*event*/) {
    if (drawing == nullptr) return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(1.0 * width() / ground.width(), 1.0 * height() / ground.height());
    drawing(painter);
}
