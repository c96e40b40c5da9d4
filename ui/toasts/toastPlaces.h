#pragma once

#include <cstdint>

/// Where toasts stand: at the bottom left of the screen, one above the other. All measures are
/// twips, of which a pixel has 15.
namespace toastPlaces {

constexpr int width = 2715;
constexpr int height = 1740;
constexpr int left = 255;
constexpr int slots = 11;

/// The last place that a search looks at. A screen has room for a fifteenth of that, so it is the
/// number of slots that ends a search, but on the lowest of screens.
[[nodiscard]] int lastPlace(int screenHeight);

/// How much of the screen a task bar at its bottom takes, when the work area ends at `workBottom`
/// pixels. Fails above 32,767.
[[nodiscard]] std::int16_t TaskbarHeight(int screenHeight, int workBottom);

/// The upper edge of a slot. Nothing keeps it on the screen.
[[nodiscard]] int top(int slot, int screenHeight, int taskbarHeight);

}  // namespace toastPlaces
