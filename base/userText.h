#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// The bytes that the program keeps of a text that people wrote, and their characters. The client
/// and newer programs write UTF-8, old ones and the files of old ones the code page; nothing says
/// which, but text in the code page with other letters than English ones is hardly ever valid
/// UTF-8.
namespace userText {

/// The characters of `bytes`, as UTF-8: those of the UTF-8 that they are, else of the code page.
[[nodiscard]] std::string shown(std::string_view bytes);

/// The bytes to keep of what somebody typed: in the code page where that is shown as it was typed,
/// else the UTF-8 itself. So `shown` gives back whatever was typed.
[[nodiscard]] std::string kept(std::string_view utf8);

/// The first `size` bytes, or up to three fewer so that no character of UTF-8 is cut in two.
[[nodiscard]] std::string_view beginning(std::string_view bytes, std::size_t size);

}  // namespace userText
