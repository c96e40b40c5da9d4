#pragma once

#include "movies/maker/Bytes.h"
#include "movies/maker/Source.h"

namespace actionCode {

/// "stop", "play SPRITE LABEL" or "command NAME" as byte code, without its end.
[[nodiscard]] Bytes read(Statement& statement);

}  // namespace actionCode
