#include "ui/Picture.h"

#include <QPainter>

void Picture::setDrawing(pictures::Drawing newDrawing) {
    drawing = newDrawing;
    update();
}

void Picture::paintEvent(QPaintEvent* /*event*/) {
    if (drawing == nullptr) return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    // Every picture is drawn on 16 by 16 and takes the room that it gets.
    painter.scale(width() / 16.0, height() / 16.0);
    drawing(painter);
}
