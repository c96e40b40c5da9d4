#pragma once

class QPainter;

/// The pictures of the help, on a ground of 16 by 16.
namespace helpPictures {

/// Two notes of music: the song in the nick name.
void paintNotes(QPainter& painter);
/// A round button to play.
void paintPlayer(QPainter& painter);
/// A card with a head and lines on it.
void paintCard(QPainter& painter);
/// Three drops of different colours.
void paintColors(QPainter& painter);
/// A magnifying glass.
void paintGlass(QPainter& painter);
/// A letter in angle brackets.
void paintBrackets(QPainter& painter);
/// A sheet with a folded corner.
void paintPaper(QPainter& painter);

/// A bullet before a remark.
void paintBullet(QPainter& painter);

}  // namespace helpPictures
