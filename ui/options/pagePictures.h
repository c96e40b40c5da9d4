#pragma once

class QPainter;

/// The pictures of the pages of the options and of the help, one each, on a ground of 16 by 16.
namespace pagePictures {

// Options.
void paintSwitches(QPainter& painter);
void paintKey(QPainter& painter);
void paintClock(QPainter& painter);
void paintBell(QPainter& painter);
void paintTitleBar(QPainter& painter);

// Help.
void paintNotes(QPainter& painter);
void paintPlayer(QPainter& painter);
void paintCard(QPainter& painter);
void paintColors(QPainter& painter);
void paintGlass(QPainter& painter);
void paintBrackets(QPainter& painter);
void paintPaper(QPainter& painter);

/// Before a remark.
void paintBullet(QPainter& painter);

}  // namespace pagePictures
