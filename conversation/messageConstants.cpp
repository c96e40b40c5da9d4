#include "conversation/messageConstants.h"

#include "base/Failure.h"
#include "base/text.h"
#include "conversation/Conversation.h"
#include "conversation/messageTools.h"
#include "desktop/mdlFunctions.h"
#include "desktop/winamp.h"
#include "platform/Clock.h"
#include "stores/options.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>

namespace {

/// Above this declared length a message stays as it was typed.
constexpr std::int32_t longest = 1640;
/// Above this length the token of the uptime stays too.
constexpr std::int32_t longestForUptime = 1600;

/// Positions in a text have 16 bits.
constexpr std::size_t longestExpanded = 32767;

/// False for nearly all that users type, which costs no more than this look then.
bool mayHoldToken(std::string_view text) { return text.find('<') != std::string_view::npos; }

/// Replaces every `token` in `text` by its value, which is asked for only if there is one. Abandons
/// the step, before it takes any memory, where the text would become too long.
template <typename Value>
void expand(std::string& text, std::string_view token, Value value) {
    const std::size_t count = occurrences(text, token);
    if (count == 0) return;
    const std::string replacement = value();
    const std::size_t kept = text.size() - count * token.size();
    if (kept + count * replacement.size() > longestExpanded) throw Failure("too long a text");
    text = replaceAll(text, token, replacement);
}

/// The tokens that messages and nick names share, but for the uptime.
void expandMachine(std::string& text, Services& services) {
    MachineFacts& machine = services.machine;
    expand(text, "<t>", [&] { return services.clock.timeText(); });
    expand(text, "<d>", [&] { return services.clock.dateText(); });
    expand(text, "<tr>", [&] { return mdlFunctions::TotalRam(machine); });
    expand(text, "<ur>", [&] { return mdlFunctions::AvailableRam(machine); });
    expand(text, "<ru>",
           [&] { return need(mdlFunctions::RamRatio(machine), "no memory is free"); });
}

void expandUptime(std::string& text, Services& services) {
    expand(text, "<ut>", [&] { return mdlFunctions::UptimeText(services.machine); });
}

void expandAll(std::string& text, std::int32_t declared, Conversation& conversation) {
    Services& services = conversation.services;
    const ConnectionRecord& connection = conversation.connection;
    // A token does not look again at its own value, yet a later one works on what an earlier one
    // has brought in.
    expand(text, "<ws>", [&] { return winamp::CurrentSong(services.player); });
    expand(text, "<mn>", [&] { return services.values.nickname; });
    expand(text, "<me>", [&] { return services.values.email; });
    expand(text, "<cn>", [&] { return need(mdlFunctions::UrlDecode(connection.contactNick)); });
    expand(text, "<ce>", [&] { return connection.contactEmail; });
    expandMachine(text, services);
    if (declared <= longestForUptime) expandUptime(text, services);
}

}  // namespace

bool messageConstants::ExpandConstants(std::string& message, Conversation& conversation) {
    if (!isOn(conversation.services.settings, options::constants)) return false;
    const auto declared = messageTools::PayloadLength(message);
    if (!declared || *declared > longest) return false;
    if (!mayHoldToken(message)) {
        // Most texts are so, and need no copy: this cannot fail, since the length has been read.
        message = need(messageTools::FixPayloadLength(std::move(message)));
        return true;
    }
    std::string expanded = message;
    expandAll(expanded, *declared, conversation);
    auto measured = messageTools::FixPayloadLength(std::move(expanded));
    if (!measured) return false;
    message = *std::move(measured);
    return true;
}

std::string messageConstants::expandNickName(std::string text, Services& services) {
    expand(text, "<me>", [&] { return services.values.email; });
    expandMachine(text, services);
    expandUptime(text, services);
    return text;
}
