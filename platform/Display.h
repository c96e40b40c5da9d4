#pragma once

#include <optional>
#include <string>

/// How the windows of this run are shown.
struct DisplayChoice {
    /// The name of Qt's platform.
    std::string platform;
    /// Why there are no windows, where there is no display to show them on.
    std::optional<std::string> withoutWindows = std::nullopt;
};

[[nodiscard]] DisplayChoice chooseDisplay();
