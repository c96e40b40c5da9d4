#pragma once

#include <optional>
#include <string>
#include <string_view>

class Conversation;
struct Services;

namespace messageConstants {

/// `message` with the tokens that the user typed replaced by their values, anywhere in the
/// chunk, and with its true length. Nothing when the option is off, or when the declared length is
/// above 1640 or not there. Abandons the step where a token that stands in it has no value, and
/// where it would grow above 32,767 characters.
[[nodiscard]] std::optional<std::string> ExpandConstants(std::string_view message,
                                                         Conversation& conversation);

/// A nick name with the tokens replaced that a nick name knows: address, time, date and the
/// machine's facts. Abandons the step as `ExpandConstants` does.
[[nodiscard]] std::string expandNickName(std::string text, Services& services);

}  // namespace messageConstants
