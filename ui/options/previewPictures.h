#pragma once

#include <QSize>

class QPainter;

/// Pictures of places on the desktop, to show the user of the options what is meant.
namespace previewPictures {

/// What the two of a place are drawn on.
inline constexpr QSize placeGround{132, 50};
/// The title bar of Messenger's window, with a sign-in on its way.
void paintMessengerWindow(QPainter& painter);
/// The tool tip of the icon in the notification area.
void paintToolTip(QPainter& painter);

inline constexpr QSize windowGround{320, 96};
/// A window whose title is left out.
void paintWindow(QPainter& painter);

}  // namespace previewPictures
