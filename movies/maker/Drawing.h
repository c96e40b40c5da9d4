#pragma once

#include "movies/maker/Paints.h"
#include "movies/maker/Source.h"

#include <QPainterPath>

#include <string>
#include <vector>

/// Something painted: an area, or a line when `width` is not 0. Lengths are in pixels.
struct Stroke {
    enum class Cap : unsigned { Round, Flat, Square };
    enum class Join : unsigned { Round, Bevel, Miter };
    double width = 0;
    Cap cap = Cap::Round;
    Join join = Join::Round;
    /// Whether the line becomes wider with what is scaled across, and down.
    bool scalesAcross = true;
    bool scalesDown = true;
    Paint paint;
    QPainterPath path;
};

/// What lies over one another in a shape, from bottom to top.
using Drawing = std::vector<Stroke>;

/// "fill PAINT GEOMETRY" or "line WIDTH [across or down or unscaled] [flat or square]
/// [bevel or miter] PAINT GEOMETRY", where the geometry is one of
///     rect X Y WIDTH HEIGHT, rounded X Y WIDTH HEIGHT RADIUS, circle X Y RADIUS,
///     ellipse X Y ACROSS DOWN, teeth X Y WIDTH HEIGHT COUNT (on its right side), path M X Y L X Y
///     Q X Y X Y C X Y X Y X Y Z, text "TEXT" X BASELINE SIZE [bold] [middle or right].
/// Each letter of a text is painted by itself: where many edges lie beside each other, drawing goes
/// along all of them for each one.
[[nodiscard]] Drawing readStrokes(Statement& statement, const Paints& paints);
