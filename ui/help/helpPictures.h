#pragma once

class QPainter;

/// The pictures of the help, on a ground of 16 by 16.
namespace helpPictures {

void paintNotes(QPainter& painter);
void paintPlayer(QPainter& painter);
void paintCard(QPainter& painter);
void paintColors(QPainter& painter);
void paintGlass(QPainter& painter);
void paintBrackets(QPainter& painter);
void paintPaper(QPainter& painter);

/// Before a remark.
void paintBullet(QPainter& painter);

}  // namespace helpPictures
