#pragma once

#include <QWidget>

/// Shows, over all else in a control, that the keyboard is with it. The mouse goes through.
class FocusRing : public QWidget {
public:
    explicit FocusRing(QWidget* control);

    /// The ring as it is everywhere, just inside `place`.
    static void paint(QPainter& painter, const QRectF& place);

protected:
    void paintEvent(QPaintEvent* event) override;
};
