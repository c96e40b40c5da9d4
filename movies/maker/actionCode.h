#pragma once

#include "movies/format/Writer.h"
#include "movies/maker/Source.h"

/// What a frame or a button does.
namespace actionCode {

/// "stop", "play SPRITE LABEL" or "command NAME" as byte code, without its end.
[[nodiscard]] swf::Writer read(Statement& statement);

}  // namespace actionCode
