#pragma once

#include <QString>

#include <cstddef>
#include <string>
#include <string_view>

/// Text of peers and of the user, which may hold any bytes, as the controls of a window show it.

/// What a control shows of text that peers have sent: each character by itself, control characters
/// as little boxes, line breaks kept.
[[nodiscard]] QString shownText(std::string_view bytes);

/// More characters than fit in a line on the widest desktop, so that a huge text costs no more to
/// lay out than a long one.
constexpr std::size_t longestShownLine = 4096;

/// The same in one line: line breaks are blanks. A text that is longer than any window is wide is
/// cut.
[[nodiscard]] QString shownLine(std::string_view bytes);

/// The content of a text box in which `bytes` are edited. A box has one kind of line break only, so
/// a lone CR or LF becomes a symbol.
[[nodiscard]] QString editableText(std::string_view bytes);
/// The bytes to keep of such a content, which `editableText` shows as it was.
[[nodiscard]] std::string bytesOfEditable(const QString& text);

/// Puts a text, and nothing else, on the clipboard.
void copyToClipboard(std::string_view text);
