#pragma once

#include <optional>
#include <string>

/// Chooses how the windows of this run are shown; to be called before the `QApplication` is made.
/// Returns why there are no windows, where there is no display to show them on.
[[nodiscard]] std::optional<std::string> chooseDisplay();
