#pragma once

#include <string>
#include <string_view>

/// Windows' own text is UTF-16. What is not valid, in either direction, comes out as U+FFFD.
namespace wideText {

/// UTF-8 as Windows takes it, and back.
[[nodiscard]] std::wstring fromUtf8(std::string_view utf8);
[[nodiscard]] std::string toUtf8(std::wstring_view wide);
/// The UTF-16 of bytes that the program keeps of a text (base/userText.h).
[[nodiscard]] std::wstring fromBytes(std::string_view bytes);

/// What the system says of an error of this number, in the user's language, as UTF-8.
[[nodiscard]] std::string describe(unsigned long error);

}  // namespace wideText
