#pragma once

class QPainter;

/// The small pictures of the windows, drawn as lines so that they are sharp at every scale. Each is
/// drawn on a ground of 16 by 16.
namespace pictures {

using Drawing = void (*)(QPainter&);

/// Two sheets, for copying.
void paintSheets(QPainter& painter);
/// A broom's stroke, for clearing.
void paintSweep(QPainter& painter);
/// A cross, for closing.
void paintCross(QPainter& painter);

}  // namespace pictures
