#pragma once

#include "movies/format/Writer.h"
#include "movies/maker/Drawing.h"

/// Drawings as tags of a movie file.
namespace shapeTags {

/// A drawing that stands still, as a character of that number.
[[nodiscard]] swf::Writer shape(unsigned number, const Drawing& drawing);

/// A line that grows, with the ratio of where it is placed, from where it begins to all that it is.
[[nodiscard]] swf::Writer growing(unsigned number, const Stroke& line);

}  // namespace shapeTags
