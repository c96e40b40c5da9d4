#include "movies/player/contours.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <utility>

namespace swf {

namespace {

Edge reversed(const Edge& edge) { return {edge.to, edge.control, edge.from, edge.curved}; }

/// Whether each edge goes on where the one before ended, or begins another outline behind one that
/// is closed. Most tools write shapes like that.
bool areInOrder(const std::vector<Edge>& edges) {
    Point start;
    for (std::size_t index = 0; index < edges.size(); ++index) {
        const bool goesOn = index > 0 && edges[index].from == edges[index - 1].to;
        if (goesOn) continue;
        if (index > 0 && edges[index - 1].to != start) return false;
        start = edges[index].from;
    }
    return true;
}

/// Puts edges in the order in which one goes on where another ends.
class Chain {
public:
    explicit Chain(std::vector<Edge> all)
        : edges(std::move(all)),
          heads(std::bit_ceil(edges.size() + 1), none),
          next(edges.size()),
          used(edges.size()) {
        // Every place has a list of the edges that begin there, the first one at its head.
        for (std::size_t index = edges.size(); index-- > 0;) {
            std::uint32_t& head = heads[slotOf(edges[index].from)];
            next[index] = std::exchange(head, static_cast<std::uint32_t>(index));
        }
    }

    std::vector<Edge> inOrder() {
        std::vector<Edge> ordered;
        ordered.reserve(edges.size());
        for (std::size_t start = 0; start < edges.size(); ++start) {
            for (std::size_t at = start; at != none && !used[at];) {
                used[at] = true;
                ordered.push_back(edges[at]);
                at = unusedFrom(edges[at].to);
            }
        }
        return ordered;
    }

private:
    static constexpr std::uint32_t none = ~0U;

    [[nodiscard]] std::size_t slotOf(Point place) const {
        const auto mixed = [](double value) {
            // Plus 0, so that there is one zero only.
            return std::bit_cast<std::uint64_t>(value + 0.0) * 0x9E3779B97F4A7C15U;
        };
        return (mixed(place.x) ^ mixed(place.y) >> 7U) >> 20U & (heads.size() - 1);
    }

    /// An edge that begins at the place and has not been used.
    std::uint32_t unusedFrom(Point place) {
        std::uint32_t* at = &heads[slotOf(place)];
        while (*at != none) {
            if (used[*at]) {
                // Leaves the list, so that it is looked at once only.
                *at = next[*at];
            } else if (edges[*at].from == place) {
                return *at;
            } else {
                at = &next[*at];
            }
        }
        return none;
    }

    std::vector<Edge> edges;
    std::vector<std::uint32_t> heads;
    std::vector<std::uint32_t> next;
    std::vector<bool> used;
};

std::vector<Edge> inOrder(std::vector<Edge> edges) {
    return areInOrder(edges) ? edges : Chain(std::move(edges)).inOrder();
}

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
        }
        if (run.fill0 == 0 || run.fill0 == run.fill1) continue;
        for (std::size_t index = run.first + run.count; index-- > run.first;)
            filled[run.fill0 - 1].push_back(reversed(shape.edges[index]));
    }
    std::vector<Painting> all;
    Layer below;
    for (const Layer& layer : shape.layers) {
        for (std::size_t index = below.fills; index < layer.fills; ++index) {
            addIfAny(all, false, index, inOrder(std::move(filled[index])));
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
