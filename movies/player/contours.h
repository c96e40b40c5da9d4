#pragma once

#include "movies/player/Shape.h"

#include <vector>

namespace swf {

/// All that one style of a shape paints.
struct Painting {
    bool isLine = false;
    /// The style's number, counted from 0 in the shape's fills or lines.
    std::size_t style = 0;
    /// Edges that go on where the one before ended belong together. Those of a fill are closed
    /// outlines; every second one that lies over another is a hole.
    std::vector<Edge> edges;
};

/// What the styles of a shape paint, from bottom to top: layer by layer, lines above fills. Styles
/// that paint nothing are left out.
[[nodiscard]] std::vector<Painting> paintings(const Shape& shape);

/// Whether a fill of the shape covers the place. Lines do not count.
[[nodiscard]] bool covers(const Shape& shape, Point place);

}  // namespace swf
