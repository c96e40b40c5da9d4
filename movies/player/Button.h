#pragma once

#include "movies/player/geometry.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace swf {

/// A thing that is shown in some states of a button.
struct ButtonRecord {
    enum State : unsigned { Up = 1, Over = 2, Down = 4, Hit = 8 };
    unsigned states = 0;
    std::uint16_t character = 0;
    std::uint16_t depth = 0;
    Matrix matrix;
    ColorTransform colors;
};

/// What happens to a button; a bit each, as files have them.
enum class ButtonEvent : unsigned {
    IdleToOverUp = 0x001,
    OverUpToIdle = 0x002,
    OverUpToOverDown = 0x004,
    OverDownToOverUp = 0x008,
    OverDownToOutDown = 0x010,
    OutDownToOverDown = 0x020,
    OutDownToIdle = 0x040,
    IdleToOverDown = 0x080,
    OverDownToIdle = 0x100,
};

struct ButtonActions {
    unsigned events = 0;
    /// The key that calls them too: a character, or one of the codes below 32; 0 for none.
    unsigned key = 0;
    std::string_view code;
};

struct Button {
    std::vector<ButtonRecord> records;
    std::vector<ButtonActions> actions;
};

}  // namespace swf
