#pragma once

#include "movies/player/Stage.h"

#include <string_view>

namespace swf {

/// Whether the texts are the same, capitals counting as small letters.
[[nodiscard]] bool equalButForCase(std::string_view one, std::string_view other);

/// The clip that a path leads to from another one, written with slashes ("/a/b", "../a") or dots
/// ("_root.a", "_parent.b"); 0 when there is none.
[[nodiscard]] InstanceNumber findTarget(Stage& stage, InstanceNumber from, std::string_view path);

}  // namespace swf
