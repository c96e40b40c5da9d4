#pragma once

#include <cstdint>
#include <memory>
#include <optional>

/// A window, as the system numbers it.
using WindowHandle = std::uintptr_t;

/// Edges on the screen, in the pixels of the system.
struct ScreenRectangle {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;

    bool operator==(const ScreenRectangle&) const = default;
};

/// What can be done to our own windows beyond their contents. Nothing happens for a handle that is
/// none of ours.
class OwnWindows {
public:
    OwnWindows() = default;
    OwnWindows(const OwnWindows&) = delete;
    OwnWindows& operator=(const OwnWindows&) = delete;
    virtual ~OwnWindows() = default;

    /// Keeps the window above all others, or no longer. Its place, size and focus stay.
    virtual void setTopMost(WindowHandle window, bool topMost) = 0;
    /// Sets how solid the window is: 0 is invisible, 255 is solid.
    virtual void setAlpha(WindowHandle window, std::uint8_t alpha) = 0;

    /// The part of the desktop that panels and task bars leave free, where that is known.
    [[nodiscard]] virtual std::optional<ScreenRectangle> workArea() = 0;
};

/// On a system that cannot do these things, nothing happens.
[[nodiscard]] std::unique_ptr<OwnWindows> makeOwnWindows();
