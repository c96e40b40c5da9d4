#pragma once

#include <QPainterPath>

#include <cstdint>
#include <vector>

/// A place in twentieths of a pixel.
struct Spot {
    std::int32_t x = 0;
    std::int32_t y = 0;
    bool operator==(const Spot&) const = default;
};

/// The next part of an outline; a jump to where the outline goes on is one too.
struct Part {
    enum class Kind { Jump, Straight, Curve };
    Kind kind = Kind::Straight;
    Spot control;
    Spot to;
};

/// A path made of what movie files know: lines and quadratic curves.
[[nodiscard]] std::vector<Part> outline(const QPainterPath& path);
