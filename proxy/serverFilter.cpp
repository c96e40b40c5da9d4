#include "proxy/serverFilter.h"

#include "base/Failure.h"
#include "base/text.h"
#include "conversation/Conversation.h"
#include "conversation/ProcessValues.h"
#include "conversation/alerts.h"
#include "conversation/messageTools.h"
#include "conversation/timestamps.h"
#include "desktop/mdlFunctions.h"
#include "stores/options.h"

#include <optional>
#include <utility>

using namespace std::string_view_literals;

namespace {

/// What is not there leaves what was kept before.
void keep(std::string& kept, std::optional<std::string_view> word) {
    if (word) kept = *word;
    kept = removeAll(kept, lineEnd);
}

void recordContact(ConnectionRecord& connection, std::optional<std::string_view> email,
                   std::optional<std::string_view> nick) {
    keep(connection.contactEmail, email);
    keep(connection.contactNick, nick);
}

void learnNickName(std::string_view chunk, ProcessValues& values) {
    const auto coded = word(firstLine(chunk), 2);
    if (!coded) return;
    if (auto nickname = mdlFunctions::UrlDecode(*coded)) values.nickname = *std::move(nickname);
}

void stamp(std::string& chunk, Services& services) {
    auto stamped = mdlFunctions::MessengerPlusPresent(services.registry)
                       ? timestamps::StampFormatted(chunk, services.settings, services.clock)
                       : timestamps::StampPlain(chunk, services.settings, services.clock);
    if (stamped) chunk = *std::move(stamped);
    if (auto measured = messageTools::FixPayloadLength(chunk)) chunk = *std::move(measured);
}

void filterText(std::string& chunk, Conversation& conversation) {
    // Each test that cannot be answered lets the message go on to the next one.
    if (surely(messageTools::HasTrailingData(chunk))) return;
    if (word(chunk, 1) == "Hotmail"sv) return;
    if (!mayBe(messageTools::IsTextMessage(chunk))) return;
    alerts::rememberWords(messageTools::SecondWord(chunk).value_or(""),
                          messageTools::MessageBody(chunk).value_or(""), conversation);
    Services& services = conversation.services;
    if (isOn(services.settings, options::timestamp)) stamp(chunk, services);
}

}  // namespace

void filterServerChunk(std::string& chunk, Conversation& conversation) {
    ProcessValues& values = conversation.services.values;
    ConnectionRecord& connection = conversation.connection;
    const std::string_view name = characters(chunk, 1, 3);
    if (name == "PRP"sv) {
        learnNickName(chunk, values);
    } else if (name == "JOI"sv) {
        recordContact(connection, word(chunk, 1), word(chunk, 2));
        alerts::join(conversation);
        alerts::lastWords(conversation);
    } else if (name == "IRO"sv) {
        recordContact(connection, word(chunk, 4), word(firstLine(chunk), 5));
    } else if (name == "USR"sv) {
        if (const auto email = word(chunk, 3)) values.email = *email;
    } else if (name == "FLN"sv) {
        alerts::offline(chunk, conversation);
    } else if (name == "RNG"sv) {
        alerts::openWindow(chunk, conversation);
    } else if (name == "MSG"sv) {
        filterText(chunk, conversation);
    } else if (name == "BYE"sv) {
        alerts::closeWindow(chunk, conversation);
    }
}
