#pragma once

#include <array>
#include <cmath>
#include <cstdint>

/// Places and colours, as movie files count them: lengths in twips, 20 of which are a pixel.
namespace swf {

constexpr double twipsPerPixel = 20;
/// Half of the square, around its own middle, in which files describe gradients.
constexpr double gradientReach = 16384;

/// A place.
struct Point {
    double x = 0;
    double y = 0;
    bool operator==(const Point&) const = default;
};

/// The sides of a rectangle, as the file gives them.
struct Rect {
    double left = 0;
    double right = 0;
    double top = 0;
    double bottom = 0;
    /// Less than 0 where a file has its sides the wrong way round.
    [[nodiscard]] double width() const { return right - left; }
    [[nodiscard]] double height() const { return bottom - top; }
};

/// x' = xx x + xy y + dx, y' = yx x + yy y + dy.
struct Matrix {
    double xx = 1;
    double yx = 0;
    double xy = 0;
    double yy = 1;
    double dx = 0;
    double dy = 0;
    bool operator==(const Matrix&) const = default;

    /// The place that the matrix brings `point` to.
    [[nodiscard]] Point map(Point point) const {
        return {xx * point.x + xy * point.y + dx, yx * point.x + yy * point.y + dy};
    }
    /// What `inner` does, and then this.
    [[nodiscard]] Matrix after(const Matrix& inner) const {
        return {xx * inner.xx + xy * inner.yx,      yx * inner.xx + yy * inner.yx,
                xx * inner.xy + xy * inner.yy,      yx * inner.xy + yy * inner.yy,
                xx * inner.dx + xy * inner.dy + dx, yx * inner.dx + yy * inner.dy + dy};
    }
    /// How much larger areas become; less than 0 for what is mirrored.
    [[nodiscard]] double determinant() const { return xx * yy - xy * yx; }
    /// Whether places can be mapped back, and all numbers are of a size to count with.
    [[nodiscard]] bool usable() const {
        constexpr double most = 1e9;
        const double scale = std::abs(determinant());
        return scale > 1e-9 && scale < most && std::abs(dx) < most && std::abs(dy) < most;
    }
    /// The place that `map` brings to `point`; only of a usable matrix.
    [[nodiscard]] Point mapBack(Point point) const {
        const double x = point.x - dx;
        const double y = point.y - dy;
        return {(yy * x - xy * y) / determinant(), (xx * y - yx * x) / determinant()};
    }
};

/// Each channel from 0 to 255; an alpha of 0 cannot be seen.
struct Color {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;
    std::uint8_t alpha = 255;
    bool operator==(const Color&) const = default;
};

/// For red, green, blue and alpha: a factor in 256ths and what is added then.
struct ColorTransform {
    std::array<int, 4> multiply{256, 256, 256, 256};
    std::array<int, 4> add{};
    bool operator==(const ColorTransform&) const = default;

    /// The colour after the transform, each channel held to 0 to 255.
    [[nodiscard]] Color apply(Color color) const;
    /// What `inner` does, and then this.
    [[nodiscard]] ColorTransform after(const ColorTransform& inner) const;
};

/// The value at `ratio`, 0 to 1, between two.
[[nodiscard]] constexpr double between(double from, double to, double ratio) {
    return from + (to - from) * ratio;
}
/// The same for each number of these.
[[nodiscard]] Point between(Point from, Point to, double ratio);
[[nodiscard]] Color between(Color from, Color to, double ratio);
[[nodiscard]] Matrix between(const Matrix& from, const Matrix& to, double ratio);

}  // namespace swf
