#include "ui/common/pictures.h"

#include "ui/common/look.h"
#include "ui/common/roles.h"

#include <QPainter>

void drawLinesIn(QPainter& painter, const QColor& color, double width) {
    painter.setPen(QPen(color, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(look::page);
}

void fillIn(QPainter& painter, const QColor& color) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
}

Picture::Picture(QWidget* parent) : QWidget(parent) { roles::decorate(*this); }

void Picture::setDrawing(Drawing newDrawing, QSize newGround) {
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
