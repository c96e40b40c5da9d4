#pragma once

#include <optional>
#include <string>
#include <string_view>

class Conversation;

/// What the program writes into the stream on its own. It has no counter: towards the client
/// nothing is numbered, what replaces a client's command keeps its number, and commands of its own
/// borrow the number that a client used last.
namespace injection {

/// Switches bold on and off in a text, for those who have the Messenger Plus add-on.
inline constexpr char boldCode = '\x02';

/// A message as the server delivers one of a contact: its words appear as the contact's.
/// `color` is a colour code, "0" when empty; `effects` is "B" for bold.
[[nodiscard]] std::string BuildFakeMessage(std::string_view contactNick,
                                           std::string_view contactEmail, std::string_view message,
                                           std::string_view color, std::string_view effects);

/// Shows a text in the client's conversation window, in the name of its contact. False when the
/// client is gone.
[[nodiscard]] bool InjectMessage(Conversation& conversation, std::string_view message,
                                 std::string_view color, std::string_view effects);

/// The control message that goes to the server in place of a chat command, under the number of
/// `fullmessage`; the contact's client shows nothing for it. Abandons the step without a number.
[[nodiscard]] std::string MakeCoverMessage(std::string_view fullmessage, std::string_view email);

/// `name`, marked as bold when the Messenger Plus add-on is there to understand it.
[[nodiscard]] std::string boldName(std::string_view name, Conversation& conversation);

/// `command` with its payload length one higher, or one lower; nothing where that is no number of
/// 16 bits. The program itself calls neither: they complete the interface.
[[nodiscard]] std::optional<std::string> add1(std::string_view command);
[[nodiscard]] std::optional<std::string> minus1(std::string_view command);

}  // namespace injection
