#include "movies/qt/DrawingBudget.h"

namespace {

// What things cost, measured with Qt's raster engine on a machine of 2020 and rounded up.
constexpr double paintingCost = 2000;
constexpr double edgeCost = 60;
constexpr double cellCost = 35;
constexpr double beyondCost = 350;
constexpr double mixedCellCost = 60;
constexpr double cellStepCost = 0.6;
constexpr double linePieceCost = 700;
constexpr double readyEdgeCost = 250;
constexpr double morphEdgeCost = 500;
constexpr double morphStyleCost = 200;
constexpr double colorPixelCost = 0.7;
constexpr double gradientPixelCost = 2;
constexpr double picturePixelCost = 10;
constexpr double recolorPixelCost = 20;
constexpr double maskCost = 5000;
constexpr double maskPixelCost = 2;

/// What outlines cost that pass through so many pixels: Qt keeps a list of those of each row, which
/// it goes along for every one that is added.
double cellsCost(double cells, const QRectF& seen) {
    const double inOneRow = std::min(cells / std::max(seen.height(), 1.0), seen.width());
    return cells * (cellCost + cellStepCost * inOneRow);
}

}  // namespace

double DrawingCosts::ordering(const swf::Shape& shape) {
    return readyEdgeCost * static_cast<double>(shape.edges.size());
}

double DrawingCosts::morphing(const swf::Shape& shape) {
    return morphEdgeCost * static_cast<double>(shape.edges.size()) +
           morphStyleCost * static_cast<double>(shape.fills.size() + shape.lines.size());
}

double DrawingCosts::path(std::size_t edges) {
    return paintingCost + edgeCost * static_cast<double>(edges);
}

double DrawingCosts::recoloring(double pixels) { return recolorPixelCost * pixels; }

double DrawingCosts::fill(const moviePaths::Path& path, bool isGradient) const {
    const double area = pixels(path.bounds);
    if (!isGradient) return colorPixelCost * area + outline(path);
    // Each piece of a row begins anew.
    return gradientPixelCost * area + mixedCellCost * path.length * pixelsPerUnit + outline(path);
}

double DrawingCosts::picture(const moviePaths::Path& path) const {
    return picturePixelCost * pixels(path.bounds) + outline(path);
}

double DrawingCosts::line(const moviePaths::Path& path, double width) const {
    // The line's outline runs along both of its sides, and around each joint.
    const double length = path.length * pixelsPerUnit;
    const double wide = width * pixelsPerUnit;
    const double cells = 2.2 * length + 4 * path.pieces * wide;
    const QRectF seen = inPixels(path.bounds.adjusted(-width, -width, width, width));
    const double area = std::min(length * wide, seen.width() * seen.height());
    return path.pieces * linePieceCost + gradientPixelCost * area +
           2 * beyondCost * path.beyond * pixelsPerUnit + cellsCost(cells, seen);
}

double DrawingCosts::mask(const QRectF& bounds) const {
    return maskCost + maskPixelCost * pixels(bounds);
}

double DrawingCosts::outline(const moviePaths::Path& path) const {
    return cellsCost(path.length * pixelsPerUnit, inPixels(path.bounds)) +
           beyondCost * path.beyond * pixelsPerUnit;
}

QRectF DrawingCosts::inPixels(const QRectF& bounds) const {
    const QRectF seen = bounds.intersected(visible);
    return {seen.topLeft() * pixelsPerUnit, seen.size() * pixelsPerUnit};
}

double DrawingCosts::pixels(const QRectF& bounds) const {
    const QRectF seen = inPixels(bounds);
    return seen.width() * seen.height();
}
