#pragma once

#include "movies/format/Reader.h"
#include "movies/format/codes.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace swf {

/// A thing that is shown in some states of a button.
struct ButtonRecord {
    /// A bit for each state that shows it. `Hit` is none: what has it reacts to the mouse.
    enum State : unsigned {
        Up = buttonFlag::Up,
        Over = buttonFlag::Over,
        Down = buttonFlag::Down,
        Hit = buttonFlag::Hit
    };
    unsigned states = 0;
    std::uint16_t character = 0;
    std::uint16_t depth = 0;
    Matrix matrix;
    ColorTransform colors;
};

/// Byte code, and what it is run for.
struct ButtonActions {
    unsigned events = 0;
    /// The key that calls them too: a character, or one of the codes below 32; 0 for none.
    unsigned key = 0;
    std::string_view code;
};

/// What a button looks like, and what it does.
struct Button {
    std::vector<ButtonRecord> records;
    std::vector<ButtonActions> actions;
};

/// The button of the first tag, behind its number.
[[nodiscard]] Button readFirstButton(Reader& reader);
/// The button of the second tag.
[[nodiscard]] Button readSecondButton(Reader& reader);
/// Gives the records of a button their colours; a single one is for all of them.
void readButtonColors(Reader& reader, Button& button);

}  // namespace swf
