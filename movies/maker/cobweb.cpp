#include "movies/maker/cobweb.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace cobweb {

namespace {

struct Plan {
    Paint paint;
    double width = 1;
    QPointF middle;
    double radius = 0;
    int spokes = 0;
    int rings = 0;
    double arcFrom = 0;
    double arcTo = 0;
    int begin = 1;
    int end = 1;

    [[nodiscard]] bool isRound() const { return arcTo - arcFrom >= 360; }
};

Plan readPlan(Statement& statement, const Paints& paints) {
    Plan plan;
    plan.paint = paints.paint(statement);
    plan.width = statement.number("a width");
    statement.expect("at");
    plan.middle.setX(statement.number("a place"));
    plan.middle.setY(statement.number("a place"));
    statement.expect("radius");
    plan.radius = statement.number("a radius");
    statement.expect("spokes");
    plan.spokes = statement.whole("a number of spokes");
    statement.expect("rings");
    plan.rings = statement.whole("a number of rings");
    statement.expect("arc");
    plan.arcFrom = statement.number("an angle");
    plan.arcTo = statement.number("an angle");
    statement.expect("from");
    plan.begin = statement.whole("a frame");
    statement.expect("to");
    plan.end = statement.whole("a frame");
    statement.finish();
    if (plan.spokes < 2 || plan.rings < 0) statement.complain("a web has two spokes at least");
    if (plan.end < plan.begin + 10) statement.complain("a web takes ten frames at least");
    return plan;
}

/// Between -1 and 1, and always the same for a spoke: no web is quite even.
double unevenness(int spoke) { return std::sin(spoke * 12.9898 + 4.1); }

/// A place on a spoke, at a share of its length.
QPointF onSpoke(const Plan& plan, int spoke, double share) {
    const int gaps = plan.isRound() ? plan.spokes : plan.spokes - 1;
    const double step = (plan.arcTo - plan.arcFrom) / gaps;
    const double bend =
        plan.isRound() || (spoke > 0 && spoke < plan.spokes - 1) ? 0.16 * unevenness(spoke) : 0;
    const double angle = (plan.arcFrom + step * (spoke + bend)) * std::numbers::pi / 180;
    const double length = plan.radius * (0.94 + 0.06 * unevenness(spoke + 7)) * share;
    return plan.middle + QPointF(std::cos(angle), std::sin(angle)) * length;
}

Strand strand(const Plan& plan, const QPainterPath& path, double from, double to) {
    const int length = plan.end - plan.begin;
    Stroke stroke;
    stroke.width = plan.width;
    stroke.paint = plan.paint;
    stroke.path = path;
    Strand made{stroke, plan.begin, plan.end};
    made.begin = plan.begin + static_cast<int>(std::lround(from * length));
    made.end = std::max(made.begin + 1, plan.begin + static_cast<int>(std::lround(to * length)));
    return made;
}

}  // namespace

std::vector<Strand> read(Statement& statement, const Paints& paints) {
    // The spokes come first, one soon after another; then the thread goes round and round.
    constexpr double spokesTime = 0.45;
    constexpr double threadBegins = 0.25;
    constexpr double sag = 0.82;
    const Plan plan = readPlan(statement, paints);
    std::vector<Strand> strands;
    for (int spoke = 0; spoke < plan.spokes; ++spoke) {
        QPainterPath path(plan.middle);
        path.lineTo(onSpoke(plan, spoke, 1));
        const double begin = spokesTime / 2 * spoke / plan.spokes;
        strands.push_back(strand(plan, path, begin, begin + spokesTime / 2));
    }
    const int gaps = plan.isRound() ? plan.spokes : plan.spokes - 1;
    const int threads = gaps * plan.rings;
    for (int thread = 0; thread < threads; ++thread) {
        const int ring = thread / gaps;
        // The thread of an open web goes to and fro.
        const bool back = !plan.isRound() && ring % 2 != 0;
        const int gap = back ? gaps - 1 - thread % gaps : thread % gaps;
        const int first = back ? gap + 1 : gap;
        const int second = (back ? gap : gap + 1) % plan.spokes;
        const double share = (ring + 1.0) / (plan.rings + 0.6);
        const QPointF from = onSpoke(plan, first, share);
        const QPointF to = onSpoke(plan, second, share);
        QPainterPath path(from);
        path.quadTo(plan.middle + ((from + to) / 2 - plan.middle) * sag, to);
        const double begin = threadBegins + (1 - threadBegins) * thread / threads;
        strands.push_back(strand(plan, path, begin, std::min(1.0, begin + 0.06)));
    }
    return strands;
}

}  // namespace cobweb
