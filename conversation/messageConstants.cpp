#include "conversation/messageConstants.h"

#include "base/Failure.h"
#include "base/text.h"
#include "conversation/Conversation.h"
#include "conversation/messageTools.h"
#include "desktop/mdlFunctions.h"
#include "desktop/winamp.h"
#include "platform/Clock.h"
#include "stores/options.h"

#include <cstdint>

namespace {

/// Above this declared length a message stays as typed.
constexpr std::int32_t longest = 1640;
/// Above this one the uptime does.
constexpr std::int32_t longestForUptime = 1600;

/// The tokens that messages and nick names share, but for the uptime.
std::string expandMachine(std::string text, Services& services) {
    text = replaceAll(text, "<t>", services.clock.timeText());
    text = replaceAll(text, "<d>", services.clock.dateText());
    text = replaceAll(text, "<tr>", mdlFunctions::TotalRam(services.machine));
    text = replaceAll(text, "<ur>", mdlFunctions::AvailableRam(services.machine));
    return replaceAll(text, "<ru>",
                      need(mdlFunctions::RamRatio(services.machine), "no memory is free"));
}

std::string expandUptime(std::string_view text, Services& services) {
    return replaceAll(text, "<ut>", mdlFunctions::UptimeText(services.machine));
}

std::string expandAll(std::string_view message, std::int32_t declared, Conversation& conversation) {
    Services& services = conversation.services;
    const ConnectionRecord& connection = conversation.connection;
    // Not recursive, yet a later token works on what an earlier one has brought in.
    std::string result = replaceAll(message, "<ws>", winamp::CurrentSong(services.player));
    result = replaceAll(result, "<mn>", services.values.nickname);
    result = replaceAll(result, "<me>", services.values.email);
    result = replaceAll(result, "<cn>", need(mdlFunctions::UrlDecode(connection.contactNick)));
    result = replaceAll(result, "<ce>", connection.contactEmail);
    result = expandMachine(std::move(result), services);
    return declared <= longestForUptime ? expandUptime(result, services) : result;
}

}  // namespace

std::optional<std::string> messageConstants::ExpandConstants(std::string_view message,
                                                             Conversation& conversation) {
    if (!isOn(conversation.services.settings, options::constants)) {
        return std::nullopt;
    }
    const auto declared = messageTools::PayloadLength(message);
    if (!declared || *declared > longest) return std::nullopt;
    return messageTools::FixPayloadLength(expandAll(message, *declared, conversation));
}

std::string messageConstants::expandNickName(std::string text, Services& services) {
    text = replaceAll(text, "<me>", services.values.email);
    return expandUptime(expandMachine(std::move(text), services), services);
}
