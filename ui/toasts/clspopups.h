#pragma once

#include "platform/OwnWindows.h"
#include "ui/toasts/frmpopup.h"
#include "ui/toasts/toastPlaces.h"

#include <array>
#include <memory>
#include <optional>
#include <string_view>

class EventLoop;
class ForeignWindows;

/// Shows texts as toasts, each in the lowest place that is free. A text that finds none is lost.
class clspopups {
public:
    /// Shows no toast yet. All three have to outlive it.
    clspopups(EventLoop& loop, OwnWindows& windows, ForeignWindows& others)
        : loop(loop), windows(windows), others(others) {}

    /// Shows a text for a while. True also when all places are taken and nothing is shown; false
    /// only on a screen too low to have as many places.
    bool popup(std::string_view text);

    /// The height of a task bar at the bottom of the screen, in twips. Nothing above 32,767.
    [[nodiscard]] std::optional<std::int16_t> TaskbarHeight();

private:
    void show(std::size_t slot, std::string_view text);
    [[nodiscard]] frmpopup& load(std::size_t slot);
    void unload(std::size_t slot);

    EventLoop& loop;
    OwnWindows& windows;
    ForeignWindows& others;
    /// A place without a window is free.
    std::array<std::unique_ptr<frmpopup>, toastPlaces::slots> toastSlots;
    /// The window that the user worked in when the last toast came.
    WindowHandle lastForeground = 0;
};
