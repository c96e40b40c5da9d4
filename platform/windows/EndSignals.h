#pragma once

#include "base/Event.h"
#include "platform/windows/HiddenWindow.h"

/// What asks the process to end, as an event: the end of the user's session, Ctrl+C and the close
/// box of the console, and a setup that is about to replace the program (WM_CLOSE to a window of
/// the class "CobweaveWindow"). One object at a time.
class EndSignals final : private HiddenWindow {
public:
    /// The loop of windows raises `arrived`, once for each time that the process is asked to end.
    explicit EndSignals(Event<> arrived);
    ~EndSignals();

private:
    [[nodiscard]] LRESULT onMessage(UINT message, WPARAM first, LPARAM second) override;

    Event<> arrived;
};
