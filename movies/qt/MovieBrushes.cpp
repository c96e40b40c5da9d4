#include "movies/qt/MovieBrushes.h"

#include "movies/qt/MoviePaths.h"

#include <QGradient>

#include <algorithm>
#include <cmath>

namespace movieBrushes {

namespace {

using swf::gradientReach;
/// A gradient's focus on its very rim leaves nothing to draw.
constexpr double farthestFocus = 0.98;

QGradient::Spread spreadOf(swf::Fill::Spread spread) {
    switch (spread) {
        case swf::Fill::Spread::Reflect: return QGradient::ReflectSpread;
        case swf::Fill::Spread::Repeat: return QGradient::RepeatSpread;
        case swf::Fill::Spread::Pad: break;
    }
    return QGradient::PadSpread;
}

/// The amount of light, 0 to 1, that a channel of a colour stands for, and back.
double lightOf(double channel) {
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}
double channelOf(double light) {
    return light <= 0.0031308 ? light * 12.92 : 1.055 * std::pow(light, 1 / 2.4) - 0.055;
}

/// Adds what lies between two colours whose light is mixed.
void addMixed(QGradientStops& stops, double place, const QColor& to) {
    constexpr int pieces = 32;
    const auto [begin, from] = stops.last();
    for (int piece = 1; piece < pieces; ++piece) {
        const double part = double{1} * piece / pieces;
        const auto mixed = [&](double one, double other) {
            return channelOf(swf::between(lightOf(one), lightOf(other), part));
        };
        const QColor color =
            QColor::fromRgbF(static_cast<float>(mixed(from.redF(), to.redF())),
                             static_cast<float>(mixed(from.greenF(), to.greenF())),
                             static_cast<float>(mixed(from.blueF(), to.blueF())),
                             static_cast<float>(swf::between(from.alphaF(), to.alphaF(), part)));
        stops.append({swf::between(begin, place, part), color});
    }
}

QGradientStops stopsOf(const swf::Fill& fill, const swf::ColorTransform& colors) {
    constexpr double nextTo = 1e-4;
    QGradientStops stops;
    double last = -nextTo;
    auto left = static_cast<double>(fill.stops.size());
    for (const swf::GradientStop& stop : fill.stops) {
        // Two colours at one place are an edge, and one that lies before the last one begins there;
        // Qt wants their places to differ, and to leave room for those that come.
        left -= 1;
        const double place =
            std::min(std::max(stop.ratio / 255.0, last + nextTo), 1 - left * nextTo);
        const QColor made = color(colors.apply(stop.color));
        if (fill.linearLight && !stops.isEmpty() && place - last > 2 * nextTo) {
            addMixed(stops, place, made);
        }
        stops.append({place, made});
        last = place;
    }
    return stops;
}

/// How much wider a line becomes. One that scales both ways grows as the diagonal of a square does,
/// which tells a skew from no change at all.
double lineScale(const swf::Line& line, const swf::Matrix& matrix) {
    if (line.scalesAcross && line.scalesDown) {
        return std::hypot(matrix.xx + matrix.xy, matrix.yx + matrix.yy) / std::sqrt(2.0);
    }
    if (line.scalesAcross) return std::hypot(matrix.xx, matrix.yx);
    if (line.scalesDown) return std::hypot(matrix.xy, matrix.yy);
    return 1 / swf::twipsPerPixel;
}

}  // namespace

QColor color(swf::Color color) { return {color.red, color.green, color.blue, color.alpha}; }

QBrush brush(const swf::Fill& fill, const swf::Matrix& matrix, const swf::ColorTransform& colors) {
    if (fill.kind == swf::Fill::Kind::Solid || fill.stops.empty()) {
        return color(colors.apply(fill.color));
    }
    const swf::Matrix place = matrix.after(fill.matrix);
    if (!place.usable()) return color(colors.apply(fill.stops.back().color));
    QBrush made;
    if (fill.kind == swf::Fill::Kind::Linear) {
        QLinearGradient gradient(-gradientReach, 0, gradientReach, 0);
        gradient.setSpread(spreadOf(fill.spread));
        gradient.setStops(stopsOf(fill, colors));
        made = gradient;
    } else {
        const double focus = std::clamp(fill.focus, -farthestFocus, farthestFocus) * gradientReach;
        QRadialGradient gradient(QPointF(0, 0), gradientReach, QPointF(focus, 0));
        gradient.setSpread(spreadOf(fill.spread));
        gradient.setStops(stopsOf(fill, colors));
        made = gradient;
    }
    made.setTransform(moviePaths::toQt(place));
    return made;
}

QPen pen(const swf::Line& line, const swf::Matrix& matrix, double thinnest) {
    const double scale = lineScale(line, matrix);
    QPen made;
    made.setWidthF(std::max(line.width * scale, thinnest));
    made.setCapStyle(line.cap == swf::Line::Cap::Round    ? Qt::RoundCap
                     : line.cap == swf::Line::Cap::Square ? Qt::SquareCap
                                                          : Qt::FlatCap);
    made.setJoinStyle(line.join == swf::Line::Join::Round   ? Qt::RoundJoin
                      : line.join == swf::Line::Join::Bevel ? Qt::BevelJoin
                                                            : Qt::SvgMiterJoin);
    made.setMiterLimit(std::clamp(line.miter, 1.0, 20.0));
    return made;
}

std::optional<QImage> recolored(const QImage& image, const swf::ColorTransform& colors,
                                const std::function<bool()>& goesOn) {
    const bool hasAlpha = image.hasAlphaChannel();
    QImage made(image.size(), QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < image.height(); ++y) {
        if (!goesOn()) return {};
        const QRgb* const row = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        QRgb* const to = reinterpret_cast<QRgb*>(made.scanLine(y));
        std::transform(row, row + image.width(), to, [&](QRgb pixel) {
            const QRgb plain = hasAlpha ? qUnpremultiply(pixel) : pixel | 0xFF000000U;
            const auto channel = [](int value) { return static_cast<std::uint8_t>(value); };
            const swf::Color color = colors.apply({channel(qRed(plain)), channel(qGreen(plain)),
                                                   channel(qBlue(plain)), channel(qAlpha(plain))});
            return qPremultiply(qRgba(color.red, color.green, color.blue, color.alpha));
        });
    }
    return made;
}

QImage extended(const QImage& image, const QRect& wanted) {
    const auto across = [&](int x) { return std::clamp(x, 0, image.width() - 1); };
    const auto down = [&](int y) { return std::clamp(y, 0, image.height() - 1); };
    const QRect there(QPoint(across(wanted.left()), down(wanted.top())),
                      QPoint(across(wanted.right()), down(wanted.bottom())));
    const QImage source = image.copy(there).convertToFormat(QImage::Format_ARGB32_Premultiplied);
    QImage made(wanted.size(), QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < made.height(); ++y) {
        const int from = down(wanted.top() + y) - there.top();
        const QRgb* const pixels = reinterpret_cast<const QRgb*>(source.constScanLine(from));
        QRgb* const row = reinterpret_cast<QRgb*>(made.scanLine(y));
        const int first = std::clamp(-wanted.left(), 0, made.width());
        const int end = std::clamp(image.width() - wanted.left(), first, made.width());
        std::fill(row, row + first, pixels[0]);
        std::copy(pixels, pixels + (end - first), row + first);
        std::fill(row + end, row + made.width(), pixels[source.width() - 1]);
    }
    return made;
}

}  // namespace movieBrushes
