#pragma once

#include "movies/player/Button.h"
#include "movies/player/Reader.h"

namespace swf {

/// The button of the first tag, behind its number.
[[nodiscard]] Button readFirstButton(Reader& reader);
/// The button of the second tag.
[[nodiscard]] Button readSecondButton(Reader& reader);
/// Gives the records of a button their colours; a single one is for all of them.
void readButtonColors(Reader& reader, Button& button);

}  // namespace swf
