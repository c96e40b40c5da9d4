#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// The one single-byte code page of the program: Windows-1252 in its web reading, in which all 256
/// codes have a character (the five that Windows left open are the control characters of the same
/// number). So any bytes come back as they were.
namespace codePage {

/// The characters of `bytes`, as UTF-8.
[[nodiscard]] std::string toUtf8(std::string_view bytes);

/// The bytes of the characters of `utf8`. A character that the code page lacks, and each byte that
/// is no UTF-8, gives "?".
[[nodiscard]] std::string fromUtf8(std::string_view utf8);

/// Whether `bytes` are valid UTF-8, as pure ASCII is too.
[[nodiscard]] bool isUtf8(std::string_view bytes);

/// Whether `byte` belongs, in UTF-8, to the character that an earlier byte begins.
[[nodiscard]] bool isContinuation(char byte);

/// The beginning of `utf8`, of at most `size` bytes, that ends between two characters.
[[nodiscard]] std::string_view cutUtf8(std::string_view utf8, std::size_t size);

/// The number of bytes of the control character (up to 1F, and from 7F to 9F) that `utf8` begins
/// with; 0 where it begins with none.
[[nodiscard]] std::size_t controlAtFront(std::string_view utf8);

/// `utf8` as a terminal may get it: the bytes of each control character, and those that are no
/// UTF-8, are written as in "\x1B".
[[nodiscard]] std::string printable(std::string_view utf8);

}  // namespace codePage
