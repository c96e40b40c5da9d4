#pragma once

#include <optional>
#include <string>

/// Why this run can show no windows, for the user to read; nothing where it can. To be asked before
/// the `QApplication` is made.
[[nodiscard]] std::optional<std::string> whyWithoutWindows();
