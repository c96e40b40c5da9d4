#pragma once

#include "base/Event.h"
#include "platform/OwnWindows.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

class Browser;
class MachineFacts;
class Registry;

/// Small functions without a state: facts about the machine, the percent coding of nick names,
/// readers of byte text, window helpers, the table of status words and searches on the web. What
/// cannot be computed is nothing.
namespace mdlFunctions {

/// Physical memory that is free, as in "127.4 Mb".
[[nodiscard]] std::string AvailableRam(MachineFacts& machine);
/// All physical memory, as in "512 Mb".
[[nodiscard]] std::string TotalRam(MachineFacts& machine);
/// How many times the free memory goes into all memory, rounded, as in "4%"; nothing when the free
/// memory rounds to 0 Mb.
[[nodiscard]] std::optional<std::string> RamRatio(MachineFacts& machine);
/// The time since the machine's start, as in "0 days, 1 hours, 5 minutes and 9 seconds.".
[[nodiscard]] std::string UptimeText(MachineFacts& machine);

/// Every character as "%" and its code in upper-case hexadecimal without a leading zero; nothing
/// for more than 32,767 characters.
[[nodiscard]] std::optional<std::string> UrlEncode(std::string_view text);
/// Every "%" and the two characters behind it as the character of that hexadecimal code, which is
/// read up to the first character that is no digit of it; nothing for more than 32,767 characters.
[[nodiscard]] std::optional<std::string> UrlDecode(std::string_view text);

/// The number that the first three characters of `text` are, most significant first; 0 when there
/// are fewer than three. Nothing where the number is above 32,767.
[[nodiscard]] std::optional<std::int16_t> Base256ToInteger(std::string_view text);
/// The characters whose codes `list` gives, decimal or hexadecimal behind an "H", with single
/// blanks between them; nothing where an item is no code. Calls `turn` after each.
[[nodiscard]] std::optional<std::string> CodesToText(std::string_view list, const Event<>& turn);

/// Puts a window above all others ("Enabled") or back among them ("Disabled"); any other word does
/// nothing.
void SetTopMost(std::string_view state, WindowHandle form, OwnWindows& windows);
/// Makes a window as opaque as `percentage` says, and leaves there what that is on the scale of
/// 255. A percentage whose value there has no 16 bits stays; one whose value has no 8 bits leaves
/// the window as it is.
void SetWindowOpacity(WindowHandle window, std::int16_t& percentage, OwnWindows& windows);

/// A status that a user can sign in with.
struct Status {
    /// The name that users know.
    std::string_view name;
    /// The name that the protocol has for it.
    std::string_view code;
};
/// All statuses, in the order in which they are offered.
inline constexpr std::array<Status, 7> statuses{{{"Online", "NLN"},
                                                 {"Busy", "BSY"},
                                                 {"Be Right Back", "BRB"},
                                                 {"Away", "AWY"},
                                                 {"On The Phone", "PHN"},
                                                 {"Out To Lunch", "LUN"},
                                                 {"Appear Offline", "HDN"}}};

/// Whether `text` is the name of a status.
[[nodiscard]] bool isStatusName(std::string_view text);

/// The protocol's code of a status as users call it; "NLN" for any other word.
[[nodiscard]] std::string_view StatusCodeFromName(std::string_view name);

// Each of the next four searches on the web, in the user's browser. It turns the blanks of `text`
// into "%20", in the caller's variable; nothing else is escaped. It abandons the step when no
// browser can be started.

/// Searches for pages.
void SearchGoogle(std::string& text, Browser& browser);
/// Searches for the meaning of a word.
void SearchDictionary(std::string& text, Browser& browser);
/// Searches for words of the same meaning.
void SearchThesaurus(std::string& text, Browser& browser);
/// Searches for what an abbreviation is short for.
void SearchAcronym(std::string& text, Browser& browser);

/// Whether the Messenger Plus add-on is installed for this user, now.
[[nodiscard]] bool MessengerPlusPresent(Registry& registry);

}  // namespace mdlFunctions
