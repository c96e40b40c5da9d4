#pragma once

/// The unit that all windows are designed in: a fifteenth of a pixel at scale 1.
constexpr int twipsPerPixel = 15;

/// Whole pixels; what is left over is dropped.
[[nodiscard]] constexpr int pixels(int twips) { return twips / twipsPerPixel; }

/// A place and a size in twips.
struct Twips {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
};
