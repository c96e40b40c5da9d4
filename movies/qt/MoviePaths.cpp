#include "movies/qt/MoviePaths.h"

#include <algorithm>
#include <cmath>

namespace moviePaths {

namespace {

/// Farther places are beyond what Qt's drawing counts with exactly.
constexpr double farthest = 1e6;
/// How far a straight line may be from the curve that it stands for, in pixels.
constexpr double tolerance = 0.08;
constexpr double mostSegments = 64;
/// Where there are more curves than this has room for, they get fewer lines each.
constexpr double mostOfAPath = 100000;

bool isNear(swf::Point place) {
    return std::abs(place.x) < farthest && std::abs(place.y) < farthest;
}

double distance(swf::Point one, swf::Point other) {
    return std::abs(one.x - other.x) + std::abs(one.y - other.y);
}

/// Appends edges to a path and keeps count.
class Maker {
public:
    Maker(const View& view, bool flattens, Qt::FillRule rule = Qt::OddEvenFill)
        : flattens(flattens),
          visible(view.visible.width() + view.visible.height()),
          pixelsPerUnit(view.pixelsPerUnit) {
        made.path.setFillRule(rule);
    }

    void moveTo(swf::Point place) {
        reach(place);
        flush();
        at = place;
        begin = place;
        if (made.usable && !flattens) made.path.moveTo(place.x, place.y);
    }
    void lineTo(swf::Point place) {
        reach(place);
        if (!made.usable) return;
        measure(distance(at, place));
        climb(at, place);
        made.edges += 1;
        made.segments += 1;
        append(place);
    }
    void curveTo(swf::Point control, swf::Point place) {
        reach(control);
        reach(place);
        if (!made.usable) return;
        measure(distance(at, control) + distance(control, place));
        climb(at, control);
        climb(control, place);
        const double across = at.x - 2 * control.x + place.x;
        const double down = at.y - 2 * control.y + place.y;
        const double bend = std::sqrt(across * across + down * down) * pixelsPerUnit;
        const double pieces =
            std::clamp(std::ceil(std::sqrt(bend / 4 / tolerance)), 1.0, mostPieces);
        made.edges += 1;
        made.segments += pieces;
        if (!flattens) {
            made.path.quadTo(control.x, control.y, place.x, place.y);
            at = place;
            return;
        }
        const swf::Point from = at;
        for (int piece = 1; piece < static_cast<int>(pieces); ++piece) {
            const double part = piece / pieces;
            append(between(between(from, control, part), between(control, place, part), part));
        }
        append(place);
    }
    /// Joins the ends of a line; areas have none.
    void close() {
        if (!flattens) made.path.closeSubpath();
    }

    Path take() {
        flush();
        made.bounds = QRectF(left, top, right - left, bottom - top);
        made.area = std::abs(made.area) / 2;
        return std::move(made);
    }
    [[nodiscard]] bool usable() const { return made.usable; }
    void reserve(std::size_t edges) {
        const auto count = static_cast<qsizetype>(edges);
        if (flattens) polygon.reserve(count + count / 2);
        mostPieces = std::clamp(mostOfAPath / (static_cast<double>(edges) + 1), 1.0, mostSegments);
    }

private:
    void append(swf::Point place) {
        // The area is that of triangles with a corner where the outline begins, those of holes
        // taken away.
        made.area +=
            (at.x - begin.x) * (place.y - begin.y) - (place.x - begin.x) * (at.y - begin.y);
        if (flattens) {
            // The lines are handed over as a whole, which takes a fifth of the time.
            if (polygon.isEmpty()) polygon.append({at.x, at.y});
            polygon.append({place.x, place.y});
        } else {
            made.path.lineTo(place.x, place.y);
        }
        at = place;
    }
    void flush() {
        if (!polygon.isEmpty()) made.path.addPolygon(polygon);
        polygon.clear();
    }
    void reach(swf::Point place) {
        left = std::min(left, place.x);
        right = std::max(right, place.x);
        top = std::min(top, place.y);
        bottom = std::max(bottom, place.y);
        made.usable = made.usable && isNear(place);
    }
    void climb(swf::Point from, swf::Point to) {
        made.rise += std::min(std::abs(to.y - from.y), visible);
    }
    void measure(double length) {
        made.length += std::min(length, visible);
        made.beyond += std::max(length - visible, 0.0);
    }

    Path made;
    QPolygonF polygon;
    bool flattens;
    double visible;
    double pixelsPerUnit;
    double mostPieces = mostSegments;
    swf::Point begin;
    swf::Point at;
    double left = farthest;
    double right = -farthest;
    double top = farthest;
    double bottom = -farthest;
};

Path make(std::span<const swf::Edge> edges, const swf::Matrix& matrix, Maker maker) {
    maker.reserve(edges.size());
    swf::Point start;
    swf::Point last;
    bool begun = false;
    for (const swf::Edge& edge : edges) {
        if (!begun || edge.from != last) {
            start = edge.from;
            maker.moveTo(matrix.map(start));
        }
        begun = true;
        if (edge.curved) {
            maker.curveTo(matrix.map(edge.control), matrix.map(edge.to));
        } else {
            maker.lineTo(matrix.map(edge.to));
        }
        if (!maker.usable()) break;
        last = edge.to;
        // The line's ends are joined.
        if (last == start) maker.close();
    }
    return maker.take();
}

}  // namespace

Path outline(std::span<const swf::Edge> edges, const swf::Matrix& matrix, const View& view) {
    return make(edges, matrix, Maker(view, true));
}

Path way(std::span<const swf::Edge> edges, const swf::Matrix& matrix, const View& view) {
    return make(edges, matrix, Maker(view, false));
}

Path lineOutline(std::span<const swf::Edge> edges, const swf::Matrix& matrix, const QPen& pen,
                 const View& view, const std::function<bool()>& goesOn) {
    constexpr std::size_t piece = 256;
    QPen used = pen;
    // Where a line is cut, both pieces have the edge at the cut, so that its joints are there.
    // Round ends are joints already.
    if (edges.size() > piece && pen.joinStyle() != Qt::RoundJoin) used.setCapStyle(Qt::FlatCap);
    const QPainterPathStroker stroker(used);
    const double scale = view.pixelsPerUnit;
    Maker maker(view, true, Qt::WindingFill);
    const auto add = [&](const QPolygonF& polygon) {
        for (int index = 0; index < polygon.size(); ++index) {
            const swf::Point place{polygon[index].x() / scale, polygon[index].y() / scale};
            if (index == 0) maker.moveTo(place);
            if (index > 0) maker.lineTo(place);
        }
    };
    for (std::size_t first = 0; first < edges.size() && goesOn(); first += piece) {
        const std::size_t count = std::min(piece + 1, edges.size() - first);
        const QPainterPath stroked =
            stroker.createStroke(way(edges.subspan(first, count), matrix, view).path);
        for (const QPolygonF& polygon :
             stroked.toSubpathPolygons(QTransform::fromScale(scale, scale)))
            add(polygon);
    }
    return maker.take();
}

Bands::Bands(const QPainterPath& outline) : rule(outline.fillRule()) {
    elements.reserve(static_cast<std::size_t>(outline.elementCount()));
    for (int index = 0; index < outline.elementCount(); ++index)
        elements.push_back(outline.elementAt(index));
}

QPainterPath Bands::between(double top, double bottom) const {
    QPainterPath made;
    made.setFillRule(rule);
    const auto side = [&](QPointF place) {
        return place.y() <= top ? -1 : place.y() >= bottom ? 1 : 0;
    };
    const auto within = [&](QPointF place) {
        return QPointF(place.x(), std::clamp(place.y(), top, bottom));
    };
    // What is above or below runs along the border, where it encloses nothing: of the places there
    // only the first and the last one of a row are needed.
    QPointF from;
    bool isLeftOut = false;
    const auto endRow = [&] {
        if (isLeftOut) made.lineTo(within(from));
        isLeftOut = false;
    };
    for (const QPainterPath::Element& element : elements) {
        const QPointF to = element;
        if (element.isMoveTo()) {
            endRow();
            made.moveTo(within(to));
        } else if (side(from) != 0 && side(from) == side(to)) {
            isLeftOut = true;
        } else {
            endRow();
            const double height = to.y() - from.y();
            const double one = height == 0 ? 0 : (top - from.y()) / height;
            const double other = height == 0 ? 0 : (bottom - from.y()) / height;
            for (const double part : {std::min(one, other), std::max(one, other)}) {
                if (part > 0 && part < 1) made.lineTo(within(from + (to - from) * part));
            }
            made.lineTo(within(to));
        }
        from = to;
    }
    endRow();
    return made;
}

QTransform toQt(const swf::Matrix& matrix) {
    return {matrix.xx, matrix.yx, matrix.xy, matrix.yy, matrix.dx, matrix.dy};
}

}  // namespace moviePaths
