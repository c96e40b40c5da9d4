#pragma once

#include <QProxyStyle>

/// How controls of Qt's look where it is not Fusion's way: message boxes have icons of our own, and
/// none on their buttons, boxes have their whole frame at every scale, and buttons with a mark show
/// the keyboard as our own controls do.
class Style final : public QProxyStyle {
public:
    Style();

    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* result) const override;
    int pixelMetric(PixelMetric metric, const QStyleOption* option,
                    const QWidget* widget) const override;
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    QIcon standardIcon(StandardPixmap icon, const QStyleOption* option,
                       const QWidget* widget) const override;
};
