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

using namespace std::string_view_literals;

namespace {

constexpr std::string_view lineEnd = "\r\n";

void recordContact(ConnectionRecord& connection, auto email, auto nick) {
    attempt([&] { connection.contactEmail = email(); });
    connection.contactEmail = removeAll(connection.contactEmail, lineEnd);
    attempt([&] { connection.contactNick = nick(); });
    connection.contactNick = removeAll(connection.contactNick, lineEnd);
}

void stamp(std::string& chunk, Services& services) {
    attempt([&] {
        chunk = mdlFunctions::MessengerPlusPresent(services.registry)
                    ? timestamps::StampFormatted(chunk, services.settings, services.clock)
                    : timestamps::StampPlain(chunk, services.settings, services.clock);
    });
    attempt([&] { chunk = messageTools::FixPayloadLength(chunk); });
}

void filterText(std::string& chunk, Conversation& conversation) {
    // Each test that cannot be answered lets the message go on to the next one.
    if (!holds([&] { return !messageTools::HasTrailingData(chunk); })) return;
    if (!holds([&] { return word(chunk, 1) != "Hotmail"sv; })) return;
    if (!holds([&] { return messageTools::IsTextMessage(chunk); })) return;
    std::string sender;
    std::string text;
    attempt([&] { sender = messageTools::SecondWord(chunk); });
    attempt([&] { text = messageTools::MessageBody(chunk); });
    alerts::rememberWords(sender, text, conversation);
    Services& services = conversation.services;
    if (isOn(services.settings, options::timestamp)) stamp(chunk, services);
}

}  // namespace

void filterServerChunk(std::string& chunk, Conversation& conversation) {
    ProcessValues& values = conversation.services.values;
    ConnectionRecord& connection = conversation.connection;
    const std::string_view name = characters(chunk, 1, 3);
    if (name == "PRP"sv) {
        attempt([&] { values.nickname = mdlFunctions::UrlDecode(word(line(chunk, 0), 2)); });
    } else if (name == "JOI"sv) {
        recordContact(
            connection, [&] { return word(chunk, 1); }, [&] { return word(chunk, 2); });
        alerts::join(conversation);
        alerts::lastWords(conversation);
    } else if (name == "IRO"sv) {
        recordContact(
            connection, [&] { return word(chunk, 4); }, [&] { return word(line(chunk, 0), 5); });
    } else if (name == "USR"sv) {
        attempt([&] { values.email = word(chunk, 3); });
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
