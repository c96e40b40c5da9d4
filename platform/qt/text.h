#pragma once

#include "base/codePage.h"

#include <QString>

#include <string>
#include <string_view>

/// The one place where the program's bytes and Qt's characters meet.

[[nodiscard]] inline QString toQString(std::string_view bytes) {
    return QString::fromStdString(codePage::toUtf8(bytes));
}

[[nodiscard]] inline std::string fromQString(const QString& text) {
    return codePage::fromUtf8(text.toStdString());
}
