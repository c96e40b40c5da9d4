#pragma once

#include "movies/maker/Bytes.h"
#include "movies/maker/Drawing.h"

/// Drawings as tags of a movie file.
namespace shapeTags {

[[nodiscard]] Bytes shape(unsigned number, const Drawing& drawing);

/// A line that grows, with the ratio of where it is placed, from where it begins to all that it is.
[[nodiscard]] Bytes growing(unsigned number, const Stroke& line);

/// x' = xx x + xy y + dx, y' = yx x + yy y + dy, in pixels.
struct Placing {
    double xx = 1;
    double yx = 0;
    double xy = 0;
    double yy = 1;
    double dx = 0;
    double dy = 0;
};
/// A matrix; the lengths in pixels.
void writeMatrix(Bytes& bytes, const Placing& placing);
void writeRect(Bytes& bytes, double left, double right, double top, double bottom);

}  // namespace shapeTags
