#pragma once

#include "ui/common/pictures.h"

#include <QWidget>

/// A small picture that only decorates.
class Picture : public QWidget {
public:
    using QWidget::QWidget;

    /// The drawing takes all the room that there is; `newGround` is what it is drawn on.
    void setDrawing(pictures::Drawing newDrawing, QSize newGround = {16, 16});

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    pictures::Drawing drawing = nullptr;
    QSize ground;
};
