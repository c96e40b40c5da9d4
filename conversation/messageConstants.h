#pragma once

#include <string>

class Conversation;
struct Services;

namespace messageConstants {

/// Replaces the tokens that the user typed by their values, anywhere in `message`, and makes its
/// length true. False, with nothing changed, when the option is off, or when the declared length is
/// above 1640 or not there. Abandons the step, with nothing changed, where a token that stands in
/// it has no value, and where it would grow above 32,767 characters.
[[nodiscard]] bool ExpandConstants(std::string& message, Conversation& conversation);

/// A nick name with the tokens replaced that a nick name knows: address, time, date and the
/// machine's facts. Abandons the step as `ExpandConstants` does.
[[nodiscard]] std::string expandNickName(std::string text, Services& services);

}  // namespace messageConstants
