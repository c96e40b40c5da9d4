#pragma once

#include "movies/format/Reader.h"
#include "movies/player/Shape.h"
#include "movies/player/styleReaders.h"

namespace swf {

/// The shape of a tag, behind its number. Fails where the bytes end; a shape that is too large has
/// its first edges only.
[[nodiscard]] Shape readShape(Reader& reader, ShapeVersion version);

/// The same of a morphing shape. Fails too when the two ends do not fit each other.
[[nodiscard]] MorphShape readMorphShape(Reader& reader, bool second);

/// The shape of a glyph, of at most `edgesLeft` edges. It has one fill: the colour of the text.
[[nodiscard]] Shape readGlyph(Reader& reader, std::size_t edgesLeft);

}  // namespace swf
