#pragma once

#include <QColor>

class QFont;
class QPainter;
class QRectF;
class QSize;

/// How all windows of the program look: colours, font and spacing, in one place.
namespace look {

/// Text, and text that can be clicked.
inline const QColor text{0, 0, 64};
inline const QColor link{31, 51, 107};
/// The ground of what is read and edited.
inline const QColor page{255, 255, 255};
/// The ground of a window around its pages.
inline const QColor window{238, 243, 249};
/// What a gradient from `page` ends in.
inline const QColor bandEnd{214, 228, 243};
/// Borders.
inline const QColor line{157, 184, 214};
/// What is chosen, has the focus or is under the mouse; also the lines of most pictures.
inline const QColor accent{47, 111, 176};
/// What is off or wrong. Readable on `page`, as are the next two.
inline const QColor alert{200, 0, 0};
/// What stands where there is nothing yet.
inline const QColor hint{98, 110, 132};
/// Lines that have a meaning, at rest.
inline const QColor mark{84, 112, 148};
/// The second colour of pictures.
inline const QColor warm{214, 131, 31};

/// The space between controls and at the edge of a window, in pixels.
inline constexpr int gap = 8;

/// Sets style, colours, font and icon for the whole program. Call it once, with a `QApplication`.
/// The slow part, looking at fonts and pictures, waits for `beforeWindows` and for the first use of
/// the icon, so that a start is served first.
void apply();

/// How many times as large as they are designed all windows are, from 1 to 2, so that their letters
/// are as large as the desktop's.
[[nodiscard]] double letterScale();
/// A length in pixels of the design, as it is at that scale.
[[nodiscard]] int scaled(int pixels);
/// Takes the scale from this font, as `apply` does from the desktop's, and sets the program's own
/// by it. On a screen that is too small for windows of that scale it is less.
void followLetters(const QFont& desktop, const QSize& screen);

/// Makes the letters of a font narrower, to three fifths at most, until `text` is no wider than
/// `width` pixels.
void narrowTo(QFont& font, const QString& text, int width);

/// Call it before each window of ours is made. For boxes and menus of Qt's it happens by itself.
void beforeWindows();

/// The ground of banners and toasts: white at the top that becomes blue.
void paintBand(QPainter& painter, const QRectF& place);

/// Shows, just inside `place`, that a control has the keyboard focus.
void paintFocusRing(QPainter& painter, const QRectF& place);

}  // namespace look
