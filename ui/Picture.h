#pragma once

#include "ui/pictures.h"

#include <QWidget>

/// A small picture that only decorates.
class Picture : public QWidget {
public:
    using QWidget::QWidget;

    void setDrawing(pictures::Drawing newDrawing);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    pictures::Drawing drawing = nullptr;
};
