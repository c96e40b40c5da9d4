#include "movies/qt/MoviePaths.h"

#include <algorithm>
#include <cmath>

namespace moviePaths {

namespace {

/// Farther places are beyond what Qt's drawing counts with exactly.
constexpr double farthest = 1e6;

bool isNear(swf::Point place) {
    return std::abs(place.x) < farthest && std::abs(place.y) < farthest;
}

double distance(swf::Point one, swf::Point other) {
    return std::abs(one.x - other.x) + std::abs(one.y - other.y);
}

}  // namespace

Path make(const std::vector<swf::Edge>& edges, const swf::Matrix& matrix, double visible) {
    Path made;
    made.path.setFillRule(Qt::OddEvenFill);
    swf::Point start;
    swf::Point last;
    double left = farthest;
    double right = -farthest;
    double top = farthest;
    double bottom = -farthest;
    const auto reach = [&](swf::Point place) {
        left = std::min(left, place.x);
        right = std::max(right, place.x);
        top = std::min(top, place.y);
        bottom = std::max(bottom, place.y);
        made.usable = made.usable && isNear(place);
    };
    for (std::size_t index = 0; index < edges.size(); ++index) {
        const swf::Edge& edge = edges[index];
        if (index == 0 || edge.from != last) {
            start = edge.from;
            const swf::Point from = matrix.map(start);
            reach(from);
            made.path.moveTo(from.x, from.y);
        }
        const swf::Point from = matrix.map(edge.from);
        const swf::Point to = matrix.map(edge.to);
        reach(to);
        double length = distance(from, to);
        if (edge.curved) {
            const swf::Point control = matrix.map(edge.control);
            reach(control);
            if (!made.usable) return made;
            made.path.quadTo(control.x, control.y, to.x, to.y);
            length = distance(from, control) + distance(control, to);
            made.pieces += 2 + std::min(length / 8, 32.0);
        } else {
            if (!made.usable) return made;
            made.path.lineTo(to.x, to.y);
            made.pieces += 1;
        }
        made.length += std::min(length, visible);
        made.beyond += std::max(length - visible, 0.0);
        last = edge.to;
        // So that the line's ends are joined.
        if (last == start) made.path.closeSubpath();
    }
    made.bounds = QRectF(left, top, right - left, bottom - top);
    return made;
}

QTransform toQt(const swf::Matrix& matrix) {
    return {matrix.xx, matrix.yx, matrix.xy, matrix.yy, matrix.dx, matrix.dy};
}

}  // namespace moviePaths
