#pragma once

#include "base/codePage.h"

#include <QString>

#include <string>
#include <string_view>

/// The one place where the program's bytes and Qt's characters meet.

/// Each byte as its character of the code page; all 256 have one.
[[nodiscard]] inline QString toQString(std::string_view bytes) {
    return QString::fromStdString(codePage::toUtf8(bytes));
}

/// Each character as its byte of the code page; one that it lacks becomes "?".
[[nodiscard]] inline std::string fromQString(const QString& text) {
    return codePage::fromUtf8(text.toStdString());
}
