#pragma once

#include "movies/maker/Drawing.h"
#include "movies/maker/Paints.h"
#include "movies/maker/Source.h"

#include <vector>

/// The web that all our movies show, as it is spun.
namespace cobweb {

/// One thread, and the frames between which it grows.
struct Strand {
    Stroke line;
    int begin = 1;
    int end = 1;
};

/// "COLOR WIDTH at X Y radius R spokes N rings N arc FROM TO from FRAME to FRAME": spokes from the
/// place, between two angles in degrees (clockwise from the right), and threads across them that
/// sag towards it.
[[nodiscard]] std::vector<Strand> read(Statement& statement, const Paints& paints);

}  // namespace cobweb
