#pragma once

#include <QString>

#include <string_view>

/// What a control shows of text that peers have sent: each character by itself, control characters
/// as little boxes, line breaks kept.
[[nodiscard]] QString shownText(std::string_view bytes);

/// The same in one line: line breaks are blanks. Of a text that is longer than any window is wide
/// only the beginning.
[[nodiscard]] QString shownLine(std::string_view bytes);

/// Puts a text, and nothing else, on the clipboard.
void copyToClipboard(std::string_view text);
