#pragma once

#include "base/Failure.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

class Chance;

/// Readers and rewriters of a "MSG" chunk, which stays one string: line 0 is the command, whose
/// word 3 is the length of the payload, all that follows its CRLF. Lines 1 to 3 of the chunk are
/// headers, line 4 is empty, the text begins with line 5. What cannot be read is nothing.
///
/// A number in line 0 is changed by replacing the first occurrence of its text, wherever it stands:
/// the same digits in a transaction number or an address, earlier in the line, are changed instead.
namespace messageTools {

/// Word 1 of line 0: the transaction number of a client's message, the sender of a server's.
[[nodiscard]] std::optional<std::string_view> SecondWord(std::string_view message);
/// The declared length of the payload; nothing where word 3 of line 0 is no number of 32 bits.
[[nodiscard]] std::optional<std::int32_t> PayloadLength(std::string_view message);
/// Whether line 2 begins with "Content-Type: text", in any case of letters. Typing notices and
/// invitations are text too.
[[nodiscard]] Answer IsTextMessage(std::string_view message);
/// Whether line 3 begins with "TypingUser:", in any case of letters. The program itself does not
/// call it: it completes the set.
[[nodiscard]] Answer IsTypingMessage(std::string_view message);
/// Line 5, whole.
[[nodiscard]] std::optional<std::string_view> FirstBodyLine(std::string_view message);
/// The text alone, cut to the declared length; nothing where the cut leaves no line of it.
[[nodiscard]] std::optional<std::string_view> MessageBody(std::string_view message);
/// Whether the chunk holds more than its first message.
[[nodiscard]] Answer HasTrailingData(std::string_view message);
/// `message` with word 3 of line 0 made the true length of its payload; nothing without a declared
/// length.
[[nodiscard]] std::optional<std::string> FixPayloadLength(std::string message);
/// `message` in a new colour, with its length in step; nothing where line 3 is no format line, line
/// 0 has no length, or the change has no 16 bits.
[[nodiscard]] std::optional<std::string> ApplyRandomColor(std::string_view message, Chance& chance);
/// A colour for `drawn`, 0 to just below 1: hexadecimal, lower case, no leading zeros; the digits
/// are blue, green, red.
[[nodiscard]] std::string colorCode(float drawn);

/// All from line 5 on: the text with whatever follows the message.
[[nodiscard]] std::optional<std::string_view> textAndRest(std::string_view message);
/// What follows line 0 and its CRLF; all of a message without one.
[[nodiscard]] std::string_view payloadOf(std::string_view message);
/// `message` with `change` added to its declared length; nothing where the length, before or
/// after, is no number of 16 bits.
[[nodiscard]] std::optional<std::string> withLengthChanged(std::string_view message,
                                                           std::int64_t change);

}  // namespace messageTools
