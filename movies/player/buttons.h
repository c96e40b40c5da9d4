#pragma once

#include "movies/player/Instance.h"
#include "movies/player/Stage.h"

#include <functional>

namespace swf {

/// The topmost button whose face for the mouse covers the place, on the whole stage; 0 for none.
[[nodiscard]] InstanceNumber buttonAt(Stage& stage, Point place);

/// Shows every button on the stage.
void eachButton(Stage& stage, const std::function<void(Instance&)>& visit);

}  // namespace swf
