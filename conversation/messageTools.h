#pragma once

#include <cstdint>
#include <string>
#include <string_view>

class Chance;

/// Readers and rewriters of a "MSG" chunk, which stays one string: line 0 is the command, whose
/// word 3 is the length of the payload, all that follows its CRLF. Lines 1 to 3 of the chunk are
/// headers, line 4 is empty, the text begins with line 5. Each tool fails when what it reads is not
/// there or is no number.
///
/// A number in line 0 is changed by replacing the first occurrence of its text, wherever it stands:
/// the same digits in a transaction number or an address, earlier in the line, take the change.
namespace messageTools {

/// Word 1 of line 0: the transaction number of a client's message, the sender of a server's.
[[nodiscard]] std::string SecondWord(std::string_view message);
/// The declared length of the payload.
[[nodiscard]] std::int32_t PayloadLength(std::string_view message);
/// Whether line 2 begins with "Content-Type: text", in any case of letters. Typing notices and
/// invitations are text too.
[[nodiscard]] bool IsTextMessage(std::string_view message);
/// Whether line 3 begins with "TypingUser:", in any case of letters.
[[nodiscard]] bool IsTypingMessage(std::string_view message);
/// Line 5, whole.
[[nodiscard]] std::string_view FirstBodyLine(std::string_view message);
/// The text alone, cut to the declared length. Fails when no text is left.
[[nodiscard]] std::string MessageBody(std::string_view message);
/// The pieces of `text` between CRLFs from the one of index 5 on, each with a CRLF behind it but
/// the last. Fails when there is none.
[[nodiscard]] std::string linesAboveFour(std::string_view text);
/// Whether the chunk holds more than its first message.
[[nodiscard]] bool HasTrailingData(std::string_view message);
/// `message` with word 3 of line 0 made the true length of its payload.
[[nodiscard]] std::string FixPayloadLength(std::string_view message);
/// `message` in a new colour, with its length in step. Fails without a format line at line 3.
[[nodiscard]] std::string ApplyRandomColor(std::string_view message, Chance& chance);
/// A colour for `drawn`, 0 to just below 1: hexadecimal, small letters, no leading zeros; the
/// digits are blue, green, red.
[[nodiscard]] std::string colorCode(float drawn);

/// `message` without the first occurrence of its line 0 and the CRLF behind that.
[[nodiscard]] std::string payloadOf(std::string_view message);
/// The integer part of the number that `text` is. Fails when it is none, or has more than 32 bits.
[[nodiscard]] std::int32_t integerPart(std::string_view text);

}  // namespace messageTools
