#pragma once

#include "movies/format/Reader.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace swf {

/// Puts a character on the stage, or changes what stands there.
struct Place {
    std::uint16_t depth = 0;
    /// True for what stands at the depth already: only what is given changes.
    bool move = false;
    std::optional<std::uint16_t> character;
    std::optional<Matrix> matrix;
    std::optional<ColorTransform> colors;
    std::optional<std::uint16_t> ratio;
    std::optional<std::uint16_t> clipDepth;
    std::string_view name;
};

/// Takes what is at the depth off the stage.
struct Remove {
    std::uint16_t depth = 0;
};

/// Byte code, a view into the movie's bytes.
struct Actions {
    std::string_view code;
};

using Control = std::variant<Place, Remove, Actions>;

/// The frames of a movie or sprite.
struct Timeline {
    std::vector<Control> controls;
    /// For each frame, the number of controls up to its end.
    std::vector<std::size_t> frameEnds;
    /// Frames, from 0, by label in lower case: labels are compared without regard to case.
    std::map<std::string, std::size_t, std::less<>> labels;

    /// How many frames there are.
    [[nodiscard]] std::size_t frameCount() const { return frameEnds.size(); }
};

/// The first tag that places a thing.
[[nodiscard]] Place readFirstPlace(Reader& reader);
/// The second one, or the third when `third`. What both hold behind the parts of `Place` (filters,
/// blending, actions of sprites) stays unread.
[[nodiscard]] Place readPlace(Reader& reader, bool third);

}  // namespace swf
