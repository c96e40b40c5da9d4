#pragma once

#include "movies/format/geometry.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace swf {

/// A colour of a gradient, and its place on the way from its beginning to its end.
struct GradientStop {
    /// The place, from 0 to 255.
    std::uint8_t ratio = 0;
    Color color;
};

/// What an area is painted with.
struct Fill {
    /// A colour, a gradient along a line or around a place, or a picture.
    enum class Kind { Solid, Linear, Radial, Bitmap };
    /// The last colour goes on, or the gradient comes again: mirrored, or as it is.
    enum class Spread { Pad, Reflect, Repeat };

    /// Which of the members below count.
    Kind kind = Kind::Solid;
    /// The colour of a solid fill.
    Color color;
    /// Leads to the shape from the gradient's square, 32768 wide around its middle, or the
    /// picture's pixels.
    Matrix matrix;
    /// The stops of a gradient, in the order of their ratios.
    std::vector<GradientStop> stops;
    /// How a gradient goes on beyond its ends.
    Spread spread = Spread::Pad;
    /// Whether the colours between stops are mixed as light is, and not as their numbers are.
    bool linearLight = false;
    /// Where a radial gradient begins, from -1 to 1 on its own x axis.
    double focus = 0;
    /// The picture's number.
    std::uint16_t bitmap = 0;
    /// Whether the picture comes over and over; else its outermost pixels go on.
    bool repeated = false;
    /// Whether pixels are mixed where the picture is scaled.
    bool smooth = true;
};

/// What a line is drawn with.
struct Line {
    /// Its ends: `None` ends with the last point, the others reach half a width beyond it.
    enum class Cap { Round, None, Square };
    /// The outside of a corner; a miter that would reach too far becomes a bevel.
    enum class Join { Round, Bevel, Miter };

    /// The width in twentieths of a pixel; 0 is the thinnest line that can be seen.
    double width = 0;
    /// The colour counts only without a `fill`.
    Color color;
    std::optional<Fill> fill;
    /// How it looks at its ends, and where two edges meet.
    Cap cap = Cap::Round;
    Join join = Join::Round;
    /// How far a miter may reach, in widths of the line.
    double miter = 3;
    /// Whether the width grows with what is scaled across and down. One that grows with neither
    /// counts in twentieths of a pixel of the screen.
    bool scalesAcross = true;
    bool scalesDown = true;
};

/// A straight line, or a quadratic curve when `curved`; the control point of a straight line lies
/// in its middle.
struct Edge {
    Point from;
    Point control;
    Point to;
    bool curved = false;
};

/// Edges that follow one another with the same styles. Styles count from 1 over all fills and lines
/// of the shape; 0 is none. `fill0` lies to the left of the way, `fill1` to the right.
struct Run {
    std::uint32_t fill0 = 0;
    std::uint32_t fill1 = 0;
    std::uint32_t line = 0;
    std::uint32_t first = 0;
    std::uint32_t count = 0;
};

/// The number of fills and lines that belong to a layer or to one below it.
struct Layer {
    std::size_t fills = 0;
    std::size_t lines = 0;
};

/// A shape as the file has it: edges in the order of a pen, with the styles on their sides.
struct Shape {
    std::vector<Fill> fills;
    std::vector<Line> lines;
    /// The layers from bottom to top; never empty once the shape has been read.
    std::vector<Layer> layers;
    std::vector<Run> runs;
    std::vector<Edge> edges;
};

/// Two shapes of the same make: all that is counted in one is counted alike in the other.
struct MorphShape {
    Shape start;
    Shape end;

    /// The shape at `ratio`, 0 to 65535, of the way.
    [[nodiscard]] Shape at(std::uint16_t ratio) const;
};

}  // namespace swf
