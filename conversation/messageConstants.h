#pragma once

#include <string>
#include <string_view>

class Conversation;
struct Services;

namespace messageConstants {

/// `message` with the tokens that the user typed replaced by what they stand for, anywhere in the
/// chunk, and with its true length. Fails, so that nothing is expanded and no command is seen, when
/// the option is off or the declared length is above 1640.
[[nodiscard]] std::string ExpandConstants(std::string_view message, Conversation& conversation);

/// A nick name with the tokens replaced that a nick name knows: address, time, date and the
/// machine's facts.
[[nodiscard]] std::string expandNickName(std::string text, Services& services);

}  // namespace messageConstants
