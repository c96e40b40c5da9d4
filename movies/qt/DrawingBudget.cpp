#include "movies/qt/DrawingBudget.h"

#include "platform/MachineFacts.h"

#include <algorithm>
#include <utility>

namespace {

/// How much is counted between two looks at the time, each of which takes a part of a microsecond.
constexpr double unmeasured = 5e4;

// What things cost, measured with Qt's raster engine. bench/movies prints what comes of them.
constexpr double paintingCost = 500;
constexpr double edgeCost = 40;
constexpr double segmentCost = 20;
constexpr double cellCost = 25;
constexpr double cellStepCost = 1.2;
constexpr double mostCellSteps = 130;
/// What steep edges cost for each pixel of the width, when a hundred of them lie in each row.
constexpr double steepCellCost = 10;
/// The longest that one band may take.
constexpr double bandCost = 1e6;
constexpr double beyondCost = 6;
constexpr double linePieceCost = 700;
constexpr double jointCost = 4000;
constexpr double thinPieceCost = 60;
constexpr double thinPixelCost = 25;
constexpr double orderedEdgeCost = 60;
constexpr double morphEdgeCost = 60;
constexpr double morphStyleCost = 400;
constexpr double rowCost = 30;
constexpr double opaquePixelCost = 0.12;
constexpr double translucentPixelCost = 0.3;
constexpr double linearPixelCost = 0.8;
constexpr double radialPixelCost = 1.2;
constexpr double gradientCellCost = 8;
constexpr double gradientCost = 3000;
/// Mixing the light between two colours.
constexpr double lightCost = 50000;
constexpr double copiedPixelCost = 0.3;
constexpr double blendedPixelCost = 0.8;
constexpr double roughPixelCost = 1;
constexpr double smoothPixelCost = 3;
constexpr double recolorPixelCost = 10;
constexpr double halvedPixelCost = 2;
constexpr double extendedPixelCost = 4;
constexpr double layerCost = 20000;
constexpr double layerPixelCost = 3;
constexpr double maskCost = 3000;
constexpr double maskRowCost = 40;

/// The cost of outlines that pass through so many pixels: Qt keeps a list of those of each row and
/// goes along it for every one that is added.
double cellsCost(double cells, const QRectF& seen) {
    const double inOneRow = std::min(cells / std::max(seen.height(), 1.0), seen.width());
    return cells * (cellCost + std::min(cellStepCost * inOneRow, mostCellSteps));
}

}  // namespace

double DrawingBudget::processorTime() { return static_cast<double>(processorTimeOfAll().count()); }

DrawingBudget::DrawingBudget(std::function<double()> clock)
    : clock(std::move(clock)), begin(this->clock ? this->clock() : 0) {}

bool DrawingBudget::take(double cost) {
    over = over || left() <= 0 || cost > left();
    if (over) return false;
    add(cost);
    return true;
}

void DrawingBudget::add(double cost) {
    pending += cost;
    counted += cost;
}

bool DrawingBudget::goesOn() {
    measure();
    over = over || measured > whole - reserved;
    return !over;
}

double DrawingBudget::left() {
    if (pending > unmeasured) measure();
    return whole - reserved - measured - pending;
}

void DrawingBudget::measure() {
    if (!clock) {
        measured += pending;
        pending = 0;
        return;
    }
    measured = clock() - begin;
    pending = 0;
}

double DrawingCosts::ordering(const swf::Shape& shape) {
    return orderedEdgeCost * static_cast<double>(shape.edges.size());
}

double DrawingCosts::morphing(const swf::Shape& shape) {
    return morphEdgeCost * static_cast<double>(shape.edges.size()) +
           morphStyleCost * static_cast<double>(shape.fills.size() + shape.lines.size());
}

double DrawingCosts::path(std::size_t edges) {
    return paintingCost + edgeCost * static_cast<double>(edges);
}

double DrawingCosts::gradient(const swf::Fill& fill) {
    if (fill.kind != swf::Fill::Kind::Linear && fill.kind != swf::Fill::Kind::Radial) return 0;
    const auto stops = static_cast<double>(fill.stops.size());
    return gradientCost + (fill.linearLight ? lightCost * stops : 0);
}

double DrawingCosts::recoloring(double pixels) { return recolorPixelCost * pixels; }

double DrawingCosts::halving(double pixels) { return halvedPixelCost * pixels; }

double DrawingCosts::extending(double pixels) { return extendedPixelCost * pixels; }

double DrawingCosts::fill(const moviePaths::Path& path, const swf::Fill& fill,
                          bool isOpaque) const {
    if (fill.kind == swf::Fill::Kind::Solid) {
        return outline(path) + covered(path) * (isOpaque ? opaquePixelCost : translucentPixelCost);
    }
    const bool linear = fill.kind == swf::Fill::Kind::Linear;
    // Each piece of a row begins anew.
    return gradient(fill) + outline(path) + gradientCellCost * path.length * view.pixelsPerUnit +
           covered(path) * (linear ? linearPixelCost : radialPixelCost);
}

double DrawingCosts::picture(const moviePaths::Path& path, PictureScaling scaling,
                             bool hasAlpha) const {
    const double pixel = scaling == PictureScaling::Smooth  ? smoothPixelCost
                         : scaling == PictureScaling::Rough ? roughPixelCost
                         : hasAlpha                         ? blendedPixelCost
                                                            : copiedPixelCost;
    const double blending = scaling == PictureScaling::None || !hasAlpha ? 0 : blendedPixelCost;
    return outline(path) + gradientCellCost * path.length * view.pixelsPerUnit +
           covered(path) * (pixel + blending);
}

double DrawingCosts::line(const moviePaths::Path& path, double width) const {
    const double length = path.length * view.pixelsPerUnit;
    const double wide = width * view.pixelsPerUnit;
    if (isThin(width, view)) {
        return path.segments * thinPieceCost + length * thinPixelCost +
               beyondCost * path.beyond * view.pixelsPerUnit;
    }
    // The line's outline runs along both of its sides, and around each joint.
    const double cells = 2.2 * length + 4 * path.segments * wide;
    const QRectF seen = inPixels(path.bounds.adjusted(-width, -width, width, width));
    const double area = std::min(length * wide, seen.width() * seen.height());
    return path.segments * linePieceCost + path.edges * jointCost + translucentPixelCost * area +
           2 * beyondCost * path.beyond * view.pixelsPerUnit + cellsCost(cells, seen);
}

double DrawingCosts::layer() const {
    const QRectF seen = inPixels(view.visible);
    return layerCost + layerPixelCost * seen.width() * seen.height();
}

double DrawingCosts::wholePicture() const {
    const QRectF seen = inPixels(view.visible);
    return blendedPixelCost * seen.width() * seen.height();
}

double DrawingCosts::mask(const moviePaths::Path& path) const {
    return maskCost + outline(path) + maskRowCost * inPixels(path.bounds).height();
}

int DrawingCosts::bands(const moviePaths::Path& path, double counted) const {
    const QRectF seen = inPixels(path.bounds);
    const double cells = path.rise * view.pixelsPerUnit;
    const double density = std::min(cells / std::max(seen.height(), 1.0) / 100, 1.0);
    const double steep = cells * density * steepCellCost * seen.width();
    const double cost = std::max(steep, counted > atOnce ? counted : 0);
    return static_cast<int>(std::clamp(cost / bandCost, 1.0, std::max(seen.height(), 1.0)));
}

double DrawingCosts::outline(const moviePaths::Path& path) const {
    // Qt fills rectangles without an outline.
    const double around = 2 * (path.bounds.width() + path.bounds.height());
    if (path.segments == 4 && path.length >= around) return paintingCost;
    return segmentCost * path.segments + rowCost * inPixels(path.bounds).height() +
           cellsCost(path.length * view.pixelsPerUnit, inPixels(path.bounds)) +
           beyondCost * path.beyond * view.pixelsPerUnit;
}

double DrawingCosts::covered(const moviePaths::Path& path) const {
    const QRectF seen = inPixels(path.bounds);
    const double area = path.area * view.pixelsPerUnit * view.pixelsPerUnit;
    return std::min(area, seen.width() * seen.height());
}

QRectF DrawingCosts::inPixels(const QRectF& bounds) const {
    const QRectF seen = bounds.intersected(view.visible);
    return {seen.topLeft() * view.pixelsPerUnit, seen.size() * view.pixelsPerUnit};
}
