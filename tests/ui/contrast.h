#pragma once

#include "ui/common/look.h"

#include <QImage>

#include <algorithm>
#include <cmath>

/// How much a colour stands out from another one, from 1 to 21: 4.5 is what letters need to be
/// readable, 3 what other marks need.
[[nodiscard]] inline double contrast(const QColor& one, const QColor& other) {
    const auto light = [](const QColor& color) {
        const auto linear = [](double part) {
            return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
               0.0722 * linear(color.blueF());
    };
    const auto [darker, lighter] = std::minmax({light(one), light(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

/// The contrast of what stands out most in a picture from the pixel at its upper left corner.
[[nodiscard]] inline double greatestContrast(const QImage& picture) {
    double greatest = 1;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            greatest =
                std::max(greatest, contrast(picture.pixelColor(x, y), picture.pixelColor(0, 0)));
    }
    return greatest;
}
