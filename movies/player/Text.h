#pragma once

#include "movies/format/Reader.h"
#include "movies/player/Shape.h"

#include <cstdint>
#include <vector>

namespace swf {

/// The shapes of characters.
struct Font {
    std::vector<Shape> glyphs;
    /// How many units of the glyphs make one em.
    double em = 1024;
};

/// One character of a text, at its place.
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

/// The glyphs of the first font tag. Fails where the bytes end or the glyphs are too large.
[[nodiscard]] Font readFirstFont(Reader& reader);
/// The same for the second and, when `fine`, the third font tag.
[[nodiscard]] Font readNamedFont(Reader& reader, bool fine);
/// The text of a tag, behind its number; the second tag's colours have alpha.
[[nodiscard]] Text readText(Reader& reader, bool withAlpha);

}  // namespace swf
