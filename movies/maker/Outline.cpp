#include "movies/maker/Outline.h"

#include <QLineF>

#include <cmath>

namespace {

/// How far a quadratic curve may be from the cubic one that it stands for, in pixels.
constexpr double tolerance = 0.02;
constexpr int mostHalvings = 5;

swf::Point inTwips(QPointF place) {
    return {std::round(place.x() * swf::twipsPerPixel), std::round(place.y() * swf::twipsPerPixel)};
}

/// Halves the curve until a quadratic one fits each piece.
void addCubic(std::vector<Part>& parts, QPointF from, QPointF one, QPointF two, QPointF to,
              int halvings) {
    // How far the two quadratic curves that share an end with this one are from each other.
    const QPointF difference = (from - to) + 3.0 * (two - one);
    const double error = std::hypot(difference.x(), difference.y()) * std::sqrt(3.0) / 36;
    if (error < tolerance || halvings == mostHalvings) {
        const QPointF control = (3.0 * (one + two) - from - to) / 4;
        parts.push_back({Part::Kind::Curve, inTwips(control), inTwips(to)});
        return;
    }
    const QPointF fromOne = (from + one) / 2;
    const QPointF oneTwo = (one + two) / 2;
    const QPointF twoTo = (two + to) / 2;
    const QPointF left = (fromOne + oneTwo) / 2;
    const QPointF right = (oneTwo + twoTo) / 2;
    const QPointF middle = (left + right) / 2;
    addCubic(parts, from, fromOne, left, middle, halvings + 1);
    addCubic(parts, middle, right, twoTo, to, halvings + 1);
}

}  // namespace

std::vector<Part> outline(const QPainterPath& path) {
    std::vector<Part> parts;
    QPointF last;
    for (int index = 0; index < path.elementCount(); ++index) {
        const QPainterPath::Element element = path.elementAt(index);
        const QPointF place = element;
        if (element.type == QPainterPath::MoveToElement) {
            parts.push_back({Part::Kind::Jump, {}, inTwips(place)});
        } else if (element.type == QPainterPath::LineToElement) {
            if (inTwips(place) != inTwips(last)) {
                parts.push_back({Part::Kind::Straight, {}, inTwips(place)});
            }
        } else if (element.type == QPainterPath::CurveToElement) {
            const QPointF end = path.elementAt(index + 2);
            addCubic(parts, last, place, path.elementAt(index + 1), end, 0);
            index += 2;
            last = end;
            continue;
        }
        last = place;
    }
    return parts;
}
