#pragma once

#include <optional>
#include <string>
#include <string_view>

/// Base64 as in RFC 4648, with padding and without line breaks: the form in which a contact's last
/// words are kept, so that line breaks and any other bytes make one plain value.
namespace mdlEncode {

/// The Base64 form of `text`.
[[nodiscard]] std::string Base64Encode(std::string_view text);

/// The bytes that `text` stands for. A character outside the alphabet counts as zero bits and is
/// not skipped; one left over at the end is ignored. Nothing for "=" alone, which pads no text.
[[nodiscard]] std::optional<std::string> Base64Decode(std::string_view text);

}  // namespace mdlEncode
