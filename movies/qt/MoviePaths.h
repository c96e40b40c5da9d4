#pragma once

#include "movies/format/geometry.h"
#include "movies/player/contours.h"

#include <QPainterPath>
#include <QPen>
#include <QRectF>
#include <QTransform>

#include <functional>
#include <span>
#include <vector>

/// Shapes of movies as paths of Qt.
namespace moviePaths {

/// The surface that is drawn on.
struct View {
    /// The part of it that can be seen, in the units of the paths.
    QRectF visible;
    /// How many of its pixels one of these units is long.
    double pixelsPerUnit = 1;
};

/// A path, and what counts when it is drawn.
struct Path {
    QPainterPath path;
    QRectF bounds;
    /// The length of all edges together, each of them at most as far as it can be seen.
    double length = 0;
    /// How much of that goes up or down.
    double rise = 0;
    /// The length beyond what can be seen: Qt goes along it all the same.
    double beyond = 0;
    /// The edges that it has, which are its joints when it is a line.
    double edges = 0;
    /// The straight lines that it is drawn as.
    double segments = 0;
    /// The area that the outlines enclose, each counted by itself.
    double area = 0;
    /// False when a place is too far away to count with.
    bool usable = true;
};

/// The edges as the outline of an area. Curves become as many straight lines as it takes to be
/// within a small part of a pixel, so that it is known how many Qt has to follow.
[[nodiscard]] Path outline(std::span<const swf::Edge> edges, const swf::Matrix& matrix,
                           const View& view);
/// The edges as the way of a line. Curves stay what they are, and are counted only.
[[nodiscard]] Path way(std::span<const swf::Edge> edges, const swf::Matrix& matrix,
                       const View& view);

/// The outline of what a pen draws along the edges. It is made piece by piece, and ends where
/// `goesOn` says so.
[[nodiscard]] Path lineOutline(std::span<const swf::Edge> edges, const swf::Matrix& matrix,
                               const QPen& pen, const View& view,
                               const std::function<bool()>& goesOn);

/// An outline of straight lines, of which parts are wanted.
class Bands {
public:
    /// Keeps the outline's lines; a curve counts as the line between its ends.
    explicit Bands(const QPainterPath& outline);
    /// The part of the area that lies between two heights.
    [[nodiscard]] QPainterPath between(double top, double bottom) const;

private:
    std::vector<QPainterPath::Element> elements;
    Qt::FillRule rule;
};

/// The same matrix for Qt.
[[nodiscard]] QTransform toQt(const swf::Matrix& matrix);

}  // namespace moviePaths
