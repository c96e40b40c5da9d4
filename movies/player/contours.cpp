#include "movies/player/contours.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

namespace swf {

namespace {

Edge reversed(const Edge& edge) { return {edge.to, edge.control, edge.from, edge.curved}; }

bool liesBefore(Point one, Point other) {
    return one.x != other.x ? one.x < other.x : one.y < other.y;
}

/// Puts edges in the order in which one goes on where another ends.
class Chain {
public:
    explicit Chain(std::vector<Edge> all) : edges(std::move(all)), next(edges.size()) {
        std::stable_sort(edges.begin(), edges.end(), [](const Edge& one, const Edge& other) {
            return liesBefore(one.from, other.from);
        });
        std::iota(next.begin(), next.end(), std::size_t{0});
        used.resize(edges.size());
    }

    std::vector<Edge> inOrder() {
        std::vector<Edge> ordered;
        ordered.reserve(edges.size());
        for (std::size_t start = 0; start < edges.size(); ++start) {
            for (std::size_t at = start; at < edges.size() && !used[at];) {
                used[at] = true;
                ordered.push_back(edges[at]);
                at = unusedFrom(edges[at].to);
            }
        }
        return ordered;
    }

private:
    /// An edge that begins at the place and has not been used; behind the end when there is none.
    std::size_t unusedFrom(Point place) {
        const auto found = std::lower_bound(
            edges.begin(), edges.end(), place,
            [](const Edge& edge, Point wanted) { return liesBefore(edge.from, wanted); });
        const auto head = static_cast<std::size_t>(found - edges.begin());
        if (head == edges.size()) return head;
        // The first of the place remembers how far they are used, so that each is looked at once.
        std::size_t& at = next[head];
        while (at < edges.size() && edges[at].from == place && used[at])
            ++at;
        return at < edges.size() && edges[at].from == place ? at : edges.size();
    }

    std::vector<Edge> edges;
    std::vector<std::size_t> next;
    std::vector<bool> used;
};

/// How often a line from the place to the right crosses the edge.
unsigned crossings(const Edge& edge, Point place) {
    const auto crossesAt = [&](double part) {
        const double x = between(between(edge.from.x, edge.control.x, part),
                                 between(edge.control.x, edge.to.x, part), part);
        return x > place.x ? 1U : 0U;
    };
    if (!edge.curved) {
        if ((edge.from.y > place.y) == (edge.to.y > place.y)) return 0;
        return crossesAt((place.y - edge.from.y) / (edge.to.y - edge.from.y));
    }
    // The curve's height over the place, as a t² + b t + c.
    const double a = edge.from.y - 2 * edge.control.y + edge.to.y;
    const double b = 2 * (edge.control.y - edge.from.y);
    const double c = edge.from.y - place.y;
    if (a == 0) {
        if ((edge.from.y > place.y) == (edge.to.y > place.y)) return 0;
        return crossesAt(-c / b);
    }
    const double inner = b * b - 4 * a * c;
    if (inner <= 0) return 0;
    const double root = std::sqrt(inner);
    unsigned count = 0;
    for (const double part : {(-b - root) / (2 * a), (-b + root) / (2 * a)}) {
        if (part >= 0 && part < 1) count += crossesAt(part);
    }
    return count;
}

void addIfAny(std::vector<Painting>& all, bool isLine, std::size_t style, std::vector<Edge> edges) {
    if (!edges.empty()) all.push_back({isLine, style, std::move(edges)});
}

}  // namespace

std::vector<Painting> paintings(const Shape& shape) {
    std::vector<std::vector<Edge>> filled(shape.fills.size());
    std::vector<std::vector<Edge>> lined(shape.lines.size());
    for (const Run& run : shape.runs) {
        for (std::size_t index = run.first; index < run.first + run.count; ++index) {
            const Edge& edge = shape.edges[index];
            if (run.line != 0) lined[run.line - 1].push_back(edge);
            // With the same fill on both sides the edge bounds nothing.
            if (run.fill0 == run.fill1) continue;
            if (run.fill1 != 0) filled[run.fill1 - 1].push_back(edge);
            if (run.fill0 != 0) filled[run.fill0 - 1].push_back(reversed(edge));
        }
    }
    std::vector<Painting> all;
    Layer below;
    for (const Layer& layer : shape.layers) {
        for (std::size_t index = below.fills; index < layer.fills; ++index) {
            addIfAny(all, false, index, Chain(std::move(filled[index])).inOrder());
        }
        for (std::size_t index = below.lines; index < layer.lines; ++index) {
            addIfAny(all, true, index, std::move(lined[index]));
        }
        below = layer;
    }
    return all;
}

bool covers(const Shape& shape, Point place) {
    std::vector<unsigned> counts(shape.fills.size() + 1);
    for (const Run& run : shape.runs) {
        if (run.fill0 == run.fill1) continue;
        for (std::size_t index = run.first; index < run.first + run.count; ++index) {
            const unsigned crossed = crossings(shape.edges[index], place);
            counts[run.fill0] += crossed;
            counts[run.fill1] += crossed;
        }
    }
    counts.front() = 0;
    return std::any_of(counts.begin(), counts.end(), [](unsigned count) { return count % 2 != 0; });
}

}  // namespace swf
