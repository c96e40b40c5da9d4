#pragma once

#include "movies/format/geometry.h"
#include "movies/player/contours.h"

#include <QPainterPath>
#include <QRectF>
#include <QTransform>

#include <vector>

/// Shapes of movies as paths of Qt.
namespace moviePaths {

/// A path, and what it takes to draw it.
struct Path {
    QPainterPath path;
    QRectF bounds;
    /// Of all edges together, each of them at most as far as it can be seen.
    double length = 0;
    /// What comes to that beyond what can be seen: Qt goes along it all the same.
    double beyond = 0;
    /// As a line: curves count for the lines that they are drawn as.
    double pieces = 0;
    /// False when a place is too far away to count with.
    bool usable = true;
};

/// The edges, brought to their place by `matrix`, on a surface of `visible` width and height
/// together.
[[nodiscard]] Path make(const std::vector<swf::Edge>& edges, const swf::Matrix& matrix,
                        double visible);

/// The same matrix for Qt.
[[nodiscard]] QTransform toQt(const swf::Matrix& matrix);

}  // namespace moviePaths
