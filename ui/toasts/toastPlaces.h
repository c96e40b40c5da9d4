#pragma once

#include <cstdint>
#include <optional>

/// The places of toasts: at the bottom left of the screen, one above the other. All measures are
/// twips where they do not say otherwise.
namespace toastPlaces {

/// The size of a toast as it is designed, and its distance from the left edge of the screen.
constexpr int width = 2715;
constexpr int height = 1740;
constexpr int left = 255;
/// How many toasts there are at most.
constexpr int slots = 11;

/// The number of the last place that a search for a free one looks at, from 0; negative on a screen
/// without any. It is far above what the screen has room for, so that the number of slots ends a
/// search on all but the lowest of screens.
[[nodiscard]] int lastPlace(int screenHeight);

/// How much of the screen a task bar at its bottom takes, when the work area ends at `workBottom`
/// pixels. Nothing above 32,767.
[[nodiscard]] std::optional<std::int16_t> TaskbarHeight(int screenHeight, int workBottom);

/// The upper edge of the toast in a slot, counted from 0, where all toasts are of this height. It
/// may be above the screen.
[[nodiscard]] int top(int slot, int toastHeight, int screenHeight, int taskbarHeight);

}  // namespace toastPlaces
