#pragma once

#include <QStringList>

#include <string>

/// The platform of Qt's that shows windows on this system or, without them, one that draws where
/// nobody looks.
[[nodiscard]] std::string qtPlatform(bool withWindows);

/// The fonts of windows on this system: the first one that is installed is taken.
[[nodiscard]] QStringList letterFonts();
