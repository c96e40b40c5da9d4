#pragma once

#include "movies/player/Player.h"
#include "movies/player/Stage.h"

#include <string_view>
#include <vector>

namespace swf {

/// Runs byte code of a frame or a button of the clip: stop, play, going to a frame or label,
/// choosing another clip for that, and commands for the host, which are appended to `commands`.
/// Code that takes away its own clip goes on. There is no script beyond that: other actions are
/// passed over, and a branch ends the code. No address is ever opened.
void runActions(Stage& stage, InstanceNumber clip, std::string_view code,
                std::vector<Command>& commands);

}  // namespace swf
