#pragma once

#include <QWidget>

class QColor;
class QPainter;

/// The small pictures of the windows, drawn as lines so that they are sharp at every scale.

/// Draws a picture, on a ground of 16 by 16 where it does not say otherwise.
using Drawing = void (*)(QPainter&);

/// What is drawn next is lines of this colour with round ends, and white within them.
void drawLinesIn(QPainter& painter, const QColor& color, double width = 1.3);
/// What is drawn next is filled with this colour, without a line around it.
void fillIn(QPainter& painter, const QColor& color);

/// A picture that only decorates.
class Picture : public QWidget {
public:
    explicit Picture(QWidget* parent);

    /// The drawing takes all the room that there is; `newGround` is what it is drawn on.
    void setDrawing(Drawing newDrawing, QSize newGround = {16, 16});

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Drawing drawing = nullptr;
    QSize ground;
};
