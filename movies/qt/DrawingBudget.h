#pragma once

#include "movies/player/Shape.h"
#include "movies/qt/MoviePaths.h"

#include <QRectF>

#include <algorithm>

/// What may go into one drawing of a movie, so that no movie holds the program up. Counted, and
/// not measured: a movie looks the same on every machine. The unit is about a nanosecond of work.
class DrawingBudget {
public:
    static constexpr double whole = 8e6;

    /// False when that is more than is left; from then on there is nothing left.
    [[nodiscard]] bool take(double cost) {
        spent += cost;
        return spent <= whole;
    }
    /// Whether that much is left.
    [[nodiscard]] bool has(double cost) const { return spent + cost <= whole; }
    /// What was taken, at most all.
    [[nodiscard]] double taken() const { return std::min(spent, whole); }
    /// Whether more was asked for than there is.
    [[nodiscard]] bool exceeded() const { return spent > whole; }

private:
    double spent = 0;
};

/// What drawing takes, in the unit of the budget: of things of any size, and on a surface of which
/// only a part is seen.
class DrawingCosts {
public:
    static constexpr double instance = 300;
    static constexpr double glyph = 100;

    DrawingCosts() = default;
    /// The surface, in the units of the paths, and how many pixels one of these units is long.
    DrawingCosts(const QRectF& visible, double pixelsPerUnit)
        : visible(visible), pixelsPerUnit(pixelsPerUnit) {}

    /// To put a shape's edges in the order in which they are drawn.
    [[nodiscard]] static double ordering(const swf::Shape& shape);
    /// To make a shape out of two that are like this one.
    [[nodiscard]] static double morphing(const swf::Shape& shape);
    /// To make a path of so many edges.
    [[nodiscard]] static double path(std::size_t edges);
    /// To change the colours of a picture of so many pixels.
    [[nodiscard]] static double recoloring(double pixels);

    /// To fill a path with a colour or gradient, or with a picture.
    [[nodiscard]] double fill(const moviePaths::Path& path, bool isGradient) const;
    [[nodiscard]] double picture(const moviePaths::Path& path) const;
    /// To draw a path as a line of a width.
    [[nodiscard]] double line(const moviePaths::Path& path, double width) const;
    /// To add a path to a mask, and to bound others by the mask.
    [[nodiscard]] double maskPart(const moviePaths::Path& path) const { return outline(path); }
    [[nodiscard]] double mask(const QRectF& bounds) const;

private:
    [[nodiscard]] double outline(const moviePaths::Path& path) const;
    /// What is seen of a part of the surface, in its pixels, and their number.
    [[nodiscard]] QRectF inPixels(const QRectF& bounds) const;
    [[nodiscard]] double pixels(const QRectF& bounds) const;

    QRectF visible;
    double pixelsPerUnit = 1;
};
