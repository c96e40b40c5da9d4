#pragma once

#include "movies/player/Bitmap.h"
#include "movies/player/Button.h"
#include "movies/player/Shape.h"
#include "movies/player/Text.h"
#include "movies/player/Timeline.h"

#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>
#include <variant>

namespace swf {

using Character = std::variant<Shape, MorphShape, Font, Text, Bitmap, Button, Timeline>;

/// All that a movie file holds. It does not change while it is played, and does not move, since its
/// parts are views into its bytes.
struct Movie {
    Movie() = default;
    Movie(const Movie&) = delete;
    Movie& operator=(const Movie&) = delete;

    /// The unpacked file, or the file itself when it is not packed.
    std::string bytes;
    unsigned version = 0;
    Rect frame;
    double framesPerSecond = 0;
    /// Without one, what is behind the movie shows through.
    std::optional<Color> background;
    std::unordered_map<std::uint16_t, Character> characters;
    Timeline timeline;

    /// The character of this number; null when there is none, or one of another kind.
    template <typename Kind>
    [[nodiscard]] const Kind* find(std::uint16_t number) const {
        const auto found = characters.find(number);
        return found == characters.end() ? nullptr : std::get_if<Kind>(&found->second);
    }
};

}  // namespace swf
