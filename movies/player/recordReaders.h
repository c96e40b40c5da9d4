#pragma once

#include "movies/player/Reader.h"
#include "movies/player/geometry.h"

/// Readers of the small records that many tags share. They fail where the bytes end.
namespace swf {

[[nodiscard]] Rect readRect(Reader& reader);
[[nodiscard]] Matrix readMatrix(Reader& reader);
[[nodiscard]] ColorTransform readColorTransform(Reader& reader, bool withAlpha);
[[nodiscard]] Color readColor(Reader& reader, bool withAlpha);
/// Passes over a list of filters.
void skipFilters(Reader& reader);

}  // namespace swf
