#pragma once

#include "movies/player/Bitmap.h"
#include "movies/player/Reader.h"

namespace swf {

/// The picture of a packed tag, behind its number; the second tag's pixels have alpha.
[[nodiscard]] Bitmap readPacked(Reader& reader, bool hasAlpha);

/// The picture of a JPEG tag, behind its number: the first one (which needs `tables`), the second,
/// the third with alpha, or the fourth.
[[nodiscard]] Bitmap readJpeg(Reader& reader, int version, std::string_view tables);

}  // namespace swf
