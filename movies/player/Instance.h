#pragma once

#include "movies/format/geometry.h"
#include "movies/player/Button.h"
#include "movies/player/Movie.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <string_view>

namespace swf {

struct Instance;

/// What stands on a stage, by depth from back to front. In old files several things may be at one
/// depth, the newest in front; a tag that names the depth means the oldest.
using DisplayList = std::multimap<std::uint16_t, Instance>;

/// Numbers are never used twice while a movie is played; 0 is none.
using InstanceNumber = std::uint64_t;

/// A sprite, or the movie itself, being played.
struct Clip {
    InstanceNumber number = 0;
    InstanceNumber parent = 0;
    const Timeline* timeline = nullptr;
    DisplayList list;
    std::size_t frame = 0;
    bool playing = true;
    /// The turn in which it was placed: it plays on from the next one.
    std::uint64_t createdIn = 0;
    unsigned depth = 0;
};

/// A button being shown.
struct Face {
    const Button* button = nullptr;
    ButtonRecord::State state = ButtonRecord::Up;
    DisplayList list;
    /// The clip that the button stands in.
    InstanceNumber parent = 0;
    unsigned depth = 0;
};

/// A character on the stage.
struct Instance {
    InstanceNumber number = 0;
    std::uint16_t character = 0;
    /// The frame that placed it, or the record of a button: by that it is known again.
    std::size_t origin = 0;
    Matrix matrix;
    ColorTransform colors;
    std::uint16_t ratio = 0;
    /// Where it is not 0, this is not drawn, but bounds what stands up to that depth.
    std::uint16_t clipDepth = 0;
    std::string_view name;
    /// Set for sprites and buttons only.
    std::unique_ptr<Clip> clip;
    std::unique_ptr<Face> face;

    /// The things that stand in it.
    [[nodiscard]] const DisplayList* inner() const {
        return clip ? &clip->list : face ? &face->list : nullptr;
    }
};

}  // namespace swf
