#pragma once

#include "movies/format/geometry.h"
#include "movies/player/Shape.h"

#include <QBrush>
#include <QColor>
#include <QImage>
#include <QPen>

#include <functional>
#include <optional>

/// Fills and lines of movies as brushes and pens of Qt. `matrix` brings the shape to its place and
/// `colors` is what its colours go through.
namespace movieBrushes {

/// The same colour for Qt.
[[nodiscard]] QColor color(swf::Color color);
/// The brush of a colour or gradient, not of a picture.
[[nodiscard]] QBrush brush(const swf::Fill& fill, const swf::Matrix& matrix,
                           const swf::ColorTransform& colors);
/// A pen at least as wide as `thinnest`, without its brush.
[[nodiscard]] QPen pen(const swf::Line& line, const swf::Matrix& matrix, double thinnest);
/// The picture with its colours changed, row by row; nothing where `goesOn` ends that. Its pixels
/// have 32 bits, and no alpha or colours that are multiplied by it.
[[nodiscard]] std::optional<QImage> recolored(const QImage& image,
                                              const swf::ColorTransform& colors,
                                              const std::function<bool()>& goesOn);

/// The part `wanted` of a picture without an end: beyond its edges the outermost pixels go on.
[[nodiscard]] QImage extended(const QImage& image, const QRect& wanted);

}  // namespace movieBrushes
