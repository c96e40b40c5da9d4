#pragma once

#include <QColor>

class QPainter;
class QRectF;

/// How all windows of the program look: colours, type and spacing, in one place.
namespace look {

inline const QColor text{0, 0, 64};
inline const QColor link{31, 51, 107};
inline const QColor page{255, 255, 255};
inline const QColor window{238, 243, 249};
inline const QColor bandEnd{214, 228, 243};
inline const QColor line{157, 184, 214};
inline const QColor accent{47, 111, 176};
inline const QColor warm{214, 131, 31};

/// Between controls, and at the edge of a window, in pixels.
inline constexpr int gap = 8;

/// Sets style, colours and type for the whole program.
void apply();

/// The ground of headers and toasts: white that becomes blue, with a line around it.
void paintBand(QPainter& painter, const QRectF& place);

/// Shows, just inside `place`, that the keyboard is with a control.
void paintFocusRing(QPainter& painter, const QRectF& place);

}  // namespace look
