#pragma once

#include "movies/player/Reader.h"
#include "movies/player/Timeline.h"

namespace swf {

/// The first tag that places a thing.
[[nodiscard]] Place readFirstPlace(Reader& reader);
/// The second one, or the third when `third`. What both hold behind the parts of `Place` (filters,
/// blending, actions of sprites) stays unread.
[[nodiscard]] Place readPlace(Reader& reader, bool third);

}  // namespace swf
