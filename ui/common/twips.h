#pragma once

/// The unit that all windows are measured in: a fifteenth of a pixel at the usual screen scale.
/// What scale the screen has is Qt's business.
constexpr int twipsPerPixel = 15;

[[nodiscard]] constexpr int pixels(int twips) { return twips / twipsPerPixel; }

/// A place and a size in twips.
struct Twips {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
};
