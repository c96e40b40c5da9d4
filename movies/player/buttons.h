#pragma once

#include "movies/player/Instance.h"
#include "movies/player/Stage.h"

#include <cstdint>
#include <functional>
#include <utility>
#include <vector>

namespace swf {

/// Where a button is: depth and character of all that it is in, from the outside in, and its own.
/// By that it is the same button when a frame places it anew. Empty for none.
using ButtonPath = std::vector<std::pair<std::uint16_t, std::uint16_t>>;

/// The topmost button whose face for the mouse covers the place, on the whole stage.
[[nodiscard]] ButtonPath buttonAt(Stage& stage, Point place);

/// The button that is there now; nothing when there is none.
[[nodiscard]] Instance* findButton(Stage& stage, const ButtonPath& path);

/// Calls `visit` with every button on the stage.
void eachButton(Stage& stage, const std::function<void(Instance&)>& visit);

}  // namespace swf
