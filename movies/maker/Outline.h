#pragma once

#include "movies/format/geometry.h"

#include <QPainterPath>

#include <vector>

/// The next part of an outline, or a jump to where the outline goes on. Places are whole twentieths
/// of a pixel.
struct Part {
    enum class Kind { Jump, Straight, Curve };
    Kind kind = Kind::Straight;
    swf::Point control;
    swf::Point to;
};

/// A path made of what movie files know: lines and quadratic curves.
[[nodiscard]] std::vector<Part> outline(const QPainterPath& path);
