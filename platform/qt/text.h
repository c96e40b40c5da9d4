#pragma once

#include "base/userText.h"

#include <QString>

#include <string>
#include <string_view>

/// The one place where the program's bytes and Qt's characters meet.

/// The characters of a text, as `userText` reads them. Any bytes have some.
[[nodiscard]] inline QString toQString(std::string_view bytes) {
    return QString::fromStdString(userText::shown(bytes));
}

/// The bytes to keep of a text, which `toQString` shows as it was.
[[nodiscard]] inline std::string fromQString(const QString& text) {
    return userText::kept(text.toStdString());
}
