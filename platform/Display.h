#pragma once

#include <memory>
#include <optional>
#include <string>

/// What was found of the display that windows are to be shown on.
struct FoundDisplay {
    /// Why this run can show no windows, for the user to read; nothing where it can.
    std::optional<std::string> whyWithoutWindows;
    /// Keeps the display open. Drop it when the `QApplication` is made: a display may end, or start
    /// anew, when the last program leaves it.
    std::shared_ptr<void> connection;
};

/// Call it before the `QApplication` is made.
[[nodiscard]] FoundDisplay findDisplay();
