#pragma once

#include "base/Event.h"

#include <chrono>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

/// An entry of a menu; the caption "-" is a separator.
struct MenuEntry {
    /// Names the entry for tests.
    std::string name;
    /// A character after "&" is the key that chooses it.
    std::string caption;
    /// The entry was chosen.
    Event<> action;
};

/// The program's icon in the notification area of the desktop.
class Tray {
public:
    /// The desktop has had no place for the icon for some time since `add`. Raised once.
    Event<> noPlace;

    Tray() = default;
    Tray(const Tray&) = delete;
    Tray& operator=(const Tray&) = delete;
    virtual ~Tray() = default;

    /// Puts the icon there, as soon as the desktop has a place for it, with a tool-tip and the menu
    /// that a right click opens; any click brings message boxes that wait to the front. It comes
    /// back by itself after the notification area was gone.
    virtual void add(std::string_view tip, const std::vector<MenuEntry>& menu) = 0;
    /// Changes the tool-tip. CR LF is a line break in it, and nothing is markup.
    virtual void modify(std::string_view tip) = 0;
    /// Takes the icon away.
    virtual void remove() = 0;
};

/// An icon that has not been added yet. `patience` is how long a desktop may take to show a place
/// for it: in a session that has just begun, panels start beside the program.
[[nodiscard]] std::unique_ptr<Tray> makeTray(
    std::chrono::milliseconds patience = std::chrono::seconds(10));
