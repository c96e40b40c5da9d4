#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// Readers and replacements for wire text: one `char` is one byte on the wire, and every position
/// and length counts those. The readers return views into their argument, to be used within the
/// statement, and nothing where there is nothing to read.

/// What ends a line on the wire.
inline constexpr std::string_view lineEnd = "\r\n";

/// The piece number `index`, from 0, of `text` cut at every `separator`; two separators in a row
/// give an empty piece, and an empty text has none.
[[nodiscard]] std::optional<std::string_view> piece(std::string_view text,
                                                    std::string_view separator, std::size_t index);

/// Word `index`, from 0, between single blanks of the whole text: the word that ends a line carries
/// the CRLF and what follows it up to the next blank.
[[nodiscard]] std::optional<std::string_view> word(std::string_view text, std::size_t index);

/// Line `index`, from 0, between CRLFs.
[[nodiscard]] std::optional<std::string_view> line(std::string_view text, std::size_t index);

/// Line 0; an empty text has an empty one here.
[[nodiscard]] std::string_view firstLine(std::string_view text);

/// All from line `index` on, with the CRLFs between the lines.
[[nodiscard]] std::optional<std::string_view> linesFrom(std::string_view text, std::size_t index);

/// The characters `first` to `last`, counted from 1; fewer, or none, where the text is shorter.
[[nodiscard]] std::string_view characters(std::string_view text, std::size_t first,
                                          std::size_t last);

/// The code, 0 to 255, of the character at `position`, counted from 1.
[[nodiscard]] std::optional<std::uint8_t> code(std::string_view text, std::size_t position);

/// `text` without the blanks at its ends.
[[nodiscard]] std::string_view trimmed(std::string_view text);

/// `text` with A to Z in lower case and all other bytes as they are.
[[nodiscard]] std::string lowerCase(std::string_view text);

/// Whether `text` begins with `head`, which is in lower case, in any case of A to Z.
[[nodiscard]] bool beginsInAnyCase(std::string_view text, std::string_view head);

/// `text` with the first occurrence of `from`, wherever it stands, replaced by `to`.
[[nodiscard]] std::string replaceFirst(std::string text, std::string_view from,
                                       std::string_view to);

/// `text` with every occurrence of `from` replaced by `to`; what comes in by that is not looked at
/// again. `from` is not empty.
[[nodiscard]] std::string replaceAll(std::string_view text, std::string_view from,
                                     std::string_view to);

/// How often `wanted` stands in `text`, one behind the other. `wanted` is not empty.
[[nodiscard]] std::size_t occurrences(std::string_view text, std::string_view wanted);

/// `text` with every occurrence of `unwanted` taken out. `unwanted` is not empty.
[[nodiscard]] std::string removeAll(std::string_view text, std::string_view unwanted);
