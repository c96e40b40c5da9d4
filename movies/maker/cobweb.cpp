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
    /// How many gaps between spokes the threads cross.
    [[nodiscard]] int gaps() const { return isRound() ? spokes : spokes - 1; }
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
double unevenness(int spoke) {
    constexpr double anglePerSpoke = 12.9898;
    constexpr double firstAngle = 4.1;
    return std::sin(spoke * anglePerSpoke + firstAngle);
}

/// A place on a spoke, at a share of its length.
QPointF onSpoke(const Plan& plan, int spoke, double share) {
    // Shares of a gap and of the radius.
    constexpr double mostBend = 0.16;
    constexpr double meanLength = 0.94;
    constexpr double mostLengthening = 0.06;
    // A spoke's length is not uneven in the way its angle is.
    constexpr int spokesApart = 7;
    const double step = (plan.arcTo - plan.arcFrom) / plan.gaps();
    const bool mayBend = plan.isRound() || (spoke > 0 && spoke < plan.spokes - 1);
    const double bend = mayBend ? mostBend * unevenness(spoke) : 0;
    const double angle = (plan.arcFrom + step * (spoke + bend)) * std::numbers::pi / 180;
    const double length =
        plan.radius * (meanLength + mostLengthening * unevenness(spoke + spokesApart)) * share;
    return plan.middle + QPointF(std::cos(angle), std::sin(angle)) * length;
}

Strand strand(const Plan& plan, const QPainterPath& path, double from, double to) {
    Stroke stroke;
    stroke.width = plan.width;
    stroke.paint = plan.paint;
    stroke.path = path;
    const auto frame = [&plan](double share) {
        return plan.begin + static_cast<int>(std::lround(share * (plan.end - plan.begin)));
    };
    const int begin = frame(from);
    return {stroke, begin, std::max(begin + 1, frame(to))};
}

}  // namespace

std::vector<Strand> read(Statement& statement, const Paints& paints) {
    // The spokes come first, one soon after another; then the thread goes round and round.
    constexpr double spokeTime = 0.225;
    constexpr double threadBegins = 0.25;
    constexpr double threadTime = 0.06;
    constexpr double sag = 0.82;
    // How far the spokes reach beyond the outermost ring, in gaps between rings.
    constexpr double beyond = 0.6;
    const Plan plan = readPlan(statement, paints);
    std::vector<Strand> strands;
    for (int spoke = 0; spoke < plan.spokes; ++spoke) {
        QPainterPath path(plan.middle);
        path.lineTo(onSpoke(plan, spoke, 1));
        const double begin = spokeTime * spoke / plan.spokes;
        strands.push_back(strand(plan, path, begin, begin + spokeTime));
    }
    const int gaps = plan.gaps();
    const int threads = gaps * plan.rings;
    for (int thread = 0; thread < threads; ++thread) {
        const int ring = thread / gaps;
        // The thread of an open web goes to and fro.
        const bool back = !plan.isRound() && ring % 2 != 0;
        const int gap = back ? gaps - 1 - thread % gaps : thread % gaps;
        const int first = back ? gap + 1 : gap;
        const int second = (back ? gap : gap + 1) % plan.spokes;
        const double share = (ring + 1.0) / (plan.rings + beyond);
        const QPointF from = onSpoke(plan, first, share);
        const QPointF to = onSpoke(plan, second, share);
        QPainterPath path(from);
        path.quadTo(plan.middle + ((from + to) / 2 - plan.middle) * sag, to);
        const double begin = threadBegins + (1 - threadBegins) * thread / threads;
        strands.push_back(strand(plan, path, begin, std::min(1.0, begin + threadTime)));
    }
    return strands;
}

}  // namespace cobweb
