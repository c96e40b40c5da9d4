#include "movies/player/Shape.h"

#include <algorithm>

namespace swf {

namespace {

Fill fillBetween(const Fill& from, const Fill& to, double ratio) {
    Fill fill = from;
    fill.color = between(from.color, to.color, ratio);
    fill.matrix = between(from.matrix, to.matrix, ratio);
    fill.focus = between(from.focus, to.focus, ratio);
    for (std::size_t index = 0; index < std::min(from.stops.size(), to.stops.size()); ++index) {
        GradientStop& stop = fill.stops[index];
        const GradientStop& last = to.stops[index];
        stop.color = between(stop.color, last.color, ratio);
        stop.ratio = static_cast<std::uint8_t>(std::lround(between(stop.ratio, last.ratio, ratio)));
    }
    return fill;
}

Line lineBetween(const Line& from, const Line& to, double ratio) {
    Line line = from;
    line.width = between(from.width, to.width, ratio);
    line.color = between(from.color, to.color, ratio);
    if (from.fill && to.fill) line.fill = fillBetween(*from.fill, *to.fill, ratio);
    return line;
}

}  // namespace

Shape MorphShape::at(std::uint16_t ratio) const {
    const double part = ratio / 65535.0;
    Shape shape;
    shape.layers = start.layers;
    shape.runs = start.runs;
    shape.fills.reserve(start.fills.size());
    for (std::size_t index = 0; index < start.fills.size(); ++index) {
        shape.fills.push_back(fillBetween(start.fills[index], end.fills[index], part));
    }
    shape.lines.reserve(start.lines.size());
    for (std::size_t index = 0; index < start.lines.size(); ++index) {
        shape.lines.push_back(lineBetween(start.lines[index], end.lines[index], part));
    }
    shape.edges.reserve(start.edges.size());
    for (std::size_t index = 0; index < start.edges.size(); ++index) {
        const Edge& from = start.edges[index];
        const Edge& to = end.edges[index];
        shape.edges.push_back({between(from.from, to.from, part),
                               between(from.control, to.control, part),
                               between(from.to, to.to, part), from.curved || to.curved});
    }
    return shape;
}

}  // namespace swf
