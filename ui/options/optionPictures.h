#pragma once

#include <QSize>

class QPainter;

/// The pictures of the options.
namespace optionPictures {

// Of the pages, on a ground of 16 by 16.
void paintSwitches(QPainter& painter);
void paintKey(QPainter& painter);
void paintClock(QPainter& painter);
void paintBell(QPainter& painter);
void paintTitleBar(QPainter& painter);

/// Of places on the desktop, to show the user what is meant. Each of the two fills this ground.
inline constexpr QSize placeGround{132, 50};
/// The title bar of Messenger's window, with a sign-in on its way.
void paintMessengerWindow(QPainter& painter);
/// The tool-tip of the icon in the notification area.
void paintToolTip(QPainter& painter);

/// The ground of `paintWindow`.
inline constexpr QSize windowGround{320, 96};
/// A window whose title is left out, since the user's own is laid over it. Fills `windowGround`.
void paintWindow(QPainter& painter);

}  // namespace optionPictures
