#include "movies/format/geometry.h"

#include <algorithm>

namespace swf {

namespace {

std::uint8_t channel(int value) { return static_cast<std::uint8_t>(std::clamp(value, 0, 255)); }

std::uint8_t channelBetween(std::uint8_t from, std::uint8_t to, double ratio) {
    return channel(static_cast<int>(std::lround(between(from, to, ratio))));
}

}  // namespace

Color ColorTransform::apply(Color color) const {
    const auto changed = [&](std::uint8_t value, std::size_t index) {
        return channel(value * multiply[index] / 256 + add[index]);
    };
    return {changed(color.red, 0), changed(color.green, 1), changed(color.blue, 2),
            changed(color.alpha, 3)};
}

ColorTransform ColorTransform::after(const ColorTransform& inner) const {
    // Held within bounds, since sprites within sprites multiply on and on.
    constexpr int most = 32767;
    ColorTransform both;
    for (std::size_t index = 0; index < multiply.size(); ++index) {
        both.multiply[index] =
            std::clamp(inner.multiply[index] * multiply[index] / 256, -most, most);
        both.add[index] =
            std::clamp(inner.add[index] * multiply[index] / 256 + add[index], -most, most);
    }
    return both;
}

Point between(Point from, Point to, double ratio) {
    return {between(from.x, to.x, ratio), between(from.y, to.y, ratio)};
}

Color between(Color from, Color to, double ratio) {
    return {channelBetween(from.red, to.red, ratio), channelBetween(from.green, to.green, ratio),
            channelBetween(from.blue, to.blue, ratio), channelBetween(from.alpha, to.alpha, ratio)};
}

Matrix between(const Matrix& from, const Matrix& to, double ratio) {
    return {between(from.xx, to.xx, ratio), between(from.yx, to.yx, ratio),
            between(from.xy, to.xy, ratio), between(from.yy, to.yy, ratio),
            between(from.dx, to.dx, ratio), between(from.dy, to.dy, ratio)};
}

}  // namespace swf
