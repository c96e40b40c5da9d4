#pragma once

#include <string>

/// The platform of Qt's that shows windows on this system or, without them, one that draws where
/// nobody looks.
[[nodiscard]] std::string qtPlatform(bool withWindows);
