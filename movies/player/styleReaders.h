#pragma once

#include "movies/format/Reader.h"
#include "movies/player/Shape.h"

namespace swf {

/// Which of the four tags of a kind is read: the records of each hold more than those of the last.
enum class ShapeVersion { One = 1, Two, Three, Four };

/// Appends the fills and lines that stand next to those of `shape`, as a new layer. Fails where
/// they would be too many.
void readStyles(Reader& reader, ShapeVersion version, Shape& shape);

/// The same for the start and the end of a morphing shape; there are two tags of it.
void readMorphStyles(Reader& reader, bool second, MorphShape& shape);

}  // namespace swf
