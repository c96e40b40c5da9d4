#pragma once

#include <cstdint>
#include <memory>

/// A window of this program, as the system numbers it.
using WindowHandle = std::uintptr_t;

/// What can be done to our own windows beyond their contents. A handle that is none of ours is
/// passed over.
class OwnWindows {
public:
    OwnWindows() = default;
    OwnWindows(const OwnWindows&) = delete;
    OwnWindows& operator=(const OwnWindows&) = delete;
    virtual ~OwnWindows() = default;

    /// Keeps the window above all others, or no longer. Its place, size and focus stay.
    virtual void setTopMost(WindowHandle window, bool topMost) = 0;
    /// 0 is invisible, 255 is solid.
    virtual void setAlpha(WindowHandle window, std::uint8_t alpha) = 0;
};

[[nodiscard]] std::unique_ptr<OwnWindows> makeOwnWindows();
