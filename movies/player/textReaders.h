#pragma once

#include "movies/player/Reader.h"
#include "movies/player/Text.h"

namespace swf {

/// The glyphs of the first font tag. Fails where the bytes end or the glyphs are too large.
[[nodiscard]] Font readFirstFont(Reader& reader);
/// The same for the second and, when `fine`, the third font tag.
[[nodiscard]] Font readNamedFont(Reader& reader, bool fine);
/// The text of a tag, behind its number; the second tag's colours have alpha.
[[nodiscard]] Text readText(Reader& reader, bool withAlpha);

}  // namespace swf
