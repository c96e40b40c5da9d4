#pragma once

#include <QString>

#include <string>
#include <string_view>

/// Text of peers and of the user, which may hold any bytes, in the controls of a window.

/// What a control shows of text that peers have sent: each character by itself, control characters
/// as little boxes, line breaks kept.
[[nodiscard]] QString shownText(std::string_view bytes);

/// The same in one line: line breaks are blanks. Of a text that is longer than any window is wide
/// only the beginning.
[[nodiscard]] QString shownLine(std::string_view bytes);

/// What a text box holds of a text, and the text that such a content stands for, byte for byte. A
/// box knows one kind of line break alone; lone CRs and LFs are signs of their own in it.
[[nodiscard]] QString editableText(std::string_view bytes);
[[nodiscard]] std::string bytesOfEditable(const QString& text);

/// Puts a text, and nothing else, on the clipboard.
void copyToClipboard(std::string_view text);
