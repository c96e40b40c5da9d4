#include "ui/common/Style.h"

#include "ui/common/look.h"
#include "ui/common/pictures.h"

#include <QAbstractButton>
#include <QIcon>
#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPixmap>
#include <QStyleOption>

namespace {

void drawSign(QPainter& painter) {
    painter.setPen(QPen(look::page, 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
}

void paintDisc(QPainter& painter, const QColor& color) {
    fillIn(painter, color);
    painter.drawEllipse(QPointF(8, 8), 7.2, 7.2);
    drawSign(painter);
}

void paintCritical(QPainter& painter) {
    paintDisc(painter, look::alert);
    painter.drawLine(QPointF(5.4, 5.4), QPointF(10.6, 10.6));
    painter.drawLine(QPointF(10.6, 5.4), QPointF(5.4, 10.6));
}

void paintWarning(QPainter& painter) {
    QPainterPath triangle(QPointF(8, 1.8));
    triangle.lineTo(14.6, 13.6);
    triangle.lineTo(1.4, 13.6);
    triangle.closeSubpath();
    painter.setPen(QPen(look::warm, 1.6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(look::warm);
    painter.drawPath(triangle);
    drawSign(painter);
    painter.drawLine(QPointF(8, 6), QPointF(8, 9.2));
    painter.drawPoint(QPointF(8, 12));
}

void paintInformation(QPainter& painter) {
    paintDisc(painter, look::accent);
    painter.drawPoint(QPointF(8, 4.6));
    painter.drawLine(QPointF(8, 7.8), QPointF(8, 11.6));
}

void paintQuestion(QPainter& painter) {
    paintDisc(painter, look::accent);
    QPainterPath hook(QPointF(5.8, 6.2));
    hook.cubicTo(QPointF(5.8, 3.2), QPointF(10.4, 3.4), QPointF(10.3, 6.2));
    hook.cubicTo(QPointF(10.2, 7.8), QPointF(8, 7.8), QPointF(8, 9.4));
    painter.drawPath(hook);
    painter.drawPoint(QPointF(8, 12.2));
}

/// A picture as an icon, which is sharp at every scale.
class DrawnIcon final : public QIconEngine {
public:
    explicit DrawnIcon(Drawing drawing) : drawing(drawing) {}

    void paint(QPainter* painter, const QRect& place, QIcon::Mode /*mode*/,
               QIcon::State /*state*/) override {
        constexpr double ground = 16;
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->translate(place.topLeft());
        painter->scale(place.width() / ground, place.height() / ground);
        drawing(*painter);
        painter->restore();
    }
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap drawn(size);
        drawn.fill(Qt::transparent);
        QPainter painter(&drawn);
        paint(&painter, drawn.rect(), mode, state);
        return drawn;
    }
    bool isNull() override { return false; }
    [[nodiscard]] QIconEngine* clone() const override { return new DrawnIcon(*this); }

private:
    Drawing drawing;
};

}  // namespace

Style::Style() : QProxyStyle("Fusion") {}

int Style::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                     QStyleHintReturn* result) const {
    if (hint == SH_DialogButtonBox_ButtonsHaveIcons) return 0;
    return QProxyStyle::styleHint(hint, option, widget, result);
}

int Style::pixelMetric(PixelMetric metric, const QStyleOption* option,
                       const QWidget* widget) const {
    const int usual = QProxyStyle::pixelMetric(metric, option, widget);
    switch (metric) {
        case PM_MessageBoxIconSize: return look::scaled(32);
        case PM_IndicatorWidth:
        case PM_IndicatorHeight:
        case PM_ExclusiveIndicatorWidth:
        case PM_ExclusiveIndicatorHeight: return look::scaled(usual);
        default: return usual;
    }
}

void Style::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                          const QWidget* widget) const {
    // The ring is around the caption, as a switch has it.
    if (element == PE_FrameFocusRect && qobject_cast<const QAbstractButton*>(widget) != nullptr) {
        painter->save();
        look::paintFocusRing(*painter, QRectF(option->rect));
        painter->restore();
        return;
    }
    if (element != PE_Frame) {
        QProxyStyle::drawPrimitive(element, option, painter, widget);
        return;
    }
    // The frame is four filled areas. Fusion draws lines along the edges: half of each is outside
    // of the box, and at a scale of 1.25 nothing of the other half is left.
    const QRect place = option->rect;
    QRect top = place;
    QRect left = place;
    top.setHeight(1);
    left.setWidth(1);
    for (const QRect& side : {top, top.translated(0, place.height() - 1), left,
                              left.translated(place.width() - 1, 0)}) {
        painter->fillRect(side, look::line);
    }
}

QIcon Style::standardIcon(StandardPixmap icon, const QStyleOption* option,
                          const QWidget* widget) const {
    switch (icon) {
        case SP_MessageBoxCritical: return QIcon(new DrawnIcon(paintCritical));
        case SP_MessageBoxWarning: return QIcon(new DrawnIcon(paintWarning));
        case SP_MessageBoxInformation: return QIcon(new DrawnIcon(paintInformation));
        case SP_MessageBoxQuestion: return QIcon(new DrawnIcon(paintQuestion));
        default: return QProxyStyle::standardIcon(icon, option, widget);
    }
}
