#pragma once

#include "movies/player/Shape.h"

#include <cstdint>
#include <vector>

namespace swf {

struct Font {
    std::vector<Shape> glyphs;
    /// The glyphs' lengths in one em.
    double em = 1024;
};

struct Glyph {
    std::uint16_t font = 0;
    std::uint32_t index = 0;
    double height = 0;
    Color color;
    Point place;
};

/// Text that stands still, glyph by glyph.
struct Text {
    Rect bounds;
    Matrix matrix;
    std::vector<Glyph> glyphs;
};

}  // namespace swf
