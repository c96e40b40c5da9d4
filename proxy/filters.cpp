#include "proxy/filters.h"

#include "base/Failure.h"
#include "base/text.h"
#include "conversation/Conversation.h"
#include "conversation/ProgramWindows.h"
#include "conversation/alerts.h"
#include "conversation/chatCommands.h"
#include "conversation/messageTools.h"
#include "conversation/timestamps.h"
#include "desktop/mdlFunctions.h"
#include "stores/options.h"

#include <optional>
#include <utility>

using namespace std::string_view_literals;

namespace {

void learnDialect(std::string_view chunk, ConnectionRecord& connection) {
    const auto offered = word(chunk, 2);
    if (offered == "MSNP9"sv) connection.protocolVersion = "9";
    // A client that offers none is taken for one of the newer dialect.
    if (!offered || offered == "MSNP10"sv) connection.protocolVersion = "10";
}

/// The client's first status, online or offline as it signs in, becomes the user's choice.
std::string_view applyStatus(std::string_view chunk, std::string& rewritten,
                             Conversation& conversation) {
    Services& services = conversation.services;
    conversation.connection.statusApplied = true;
    services.values.loggedin = true;
    std::string caption = "Cobweave - Logged In";
    services.windows.changetraycaption(caption);
    if (const auto postfix = word(chunk, 3)) services.values.statusPostfix = *postfix;
    const std::string status = textOf(services.settings, options::initialStatus);
    rewritten = replaceFirst(std::string(chunk), "NLN"sv, "{status}"sv);
    rewritten = replaceFirst(std::move(rewritten), "FLN"sv, "{status}"sv);
    rewritten =
        replaceFirst(std::move(rewritten), "{status}"sv, mdlFunctions::StatusCodeFromName(status));
    return rewritten;
}

std::string_view filterMessage(std::string_view chunk, std::string& rewritten,
                               Conversation& conversation) {
    constexpr std::string_view peerToPeer = "Content-Type: application/x-msnmsgrp2p";
    if (line(chunk, 2) == peerToPeer) return chunk;
    rewritten = chunk;
    attempt([&] { chatCommands::FilterOutgoing(rewritten, conversation); });
    if (isOn(conversation.services.settings, options::useristyping)) {
        // The contact's client does not know this header and shows nothing; the length stays.
        rewritten = replaceFirst(std::move(rewritten), "TypingUser:"sv, "TypingUserx"sv);
    }
    return rewritten;
}

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

/// Every answer about a sign-in names somebody, the last one the account that it is for.
void learnAccount(std::string_view chunk, Conversation& conversation) {
    ProcessValues& values = conversation.services.values;
    const auto email = word(chunk, 3);
    if (!email) return;
    values.email = *email;
    if (word(chunk, 2) != "OK"sv) return;
    const std::string before = std::exchange(values.account, *email);
    const bool isSecond = values.serverID != 0 &&
                          values.serverID != conversation.connection.formID && !before.empty() &&
                          lowerCase(before) != lowerCase(*email);
    if (!isSecond || std::exchange(values.secondAccountReported, true)) return;
    conversation.services.windows.popup(std::string(*email).append(
        " has signed in as a second account. Cobweave serves one at a time: "
        "nick names and commands of both get mixed up."));
}

std::string_view stamp(std::string_view chunk, std::string& rewritten, Services& services) {
    auto stamped = mdlFunctions::MessengerPlusPresent(services.registry)
                       ? timestamps::StampFormatted(chunk, services.settings, services.clock)
                       : timestamps::StampPlain(chunk, services.settings, services.clock);
    rewritten = stamped ? *std::move(stamped) : std::string(chunk);
    if (auto measured = messageTools::FixPayloadLength(rewritten)) rewritten = *std::move(measured);
    return rewritten;
}

std::string_view filterText(std::string_view chunk, std::string& rewritten,
                            Conversation& conversation) {
    // Each test that cannot be answered lets the message go on to the next one.
    if (surely(messageTools::HasTrailingData(chunk))) return chunk;
    if (word(chunk, 1) == "Hotmail"sv) return chunk;
    if (!mayBe(messageTools::IsTextMessage(chunk))) return chunk;
    alerts::rememberWords(messageTools::SecondWord(chunk).value_or(""),
                          messageTools::MessageBody(chunk).value_or(""), conversation);
    Services& services = conversation.services;
    if (!isOn(services.settings, options::timestamp)) return chunk;
    return stamp(chunk, rewritten, services);
}

}  // namespace

std::string_view filterClientChunk(std::string_view chunk, std::string& rewritten,
                                   Conversation& conversation) {
    ProcessValues& values = conversation.services.values;
    ConnectionRecord& connection = conversation.connection;
    if (const auto number = word(chunk, 1)) values.tranID = *number;
    const std::string_view name = characters(chunk, 1, 3);
    if (name == "VER"sv) {
        learnDialect(chunk, connection);
    } else if (name == "CHG"sv) {
        values.serverID = connection.formID;
        if (connection.statusApplied) return chunk;
        return applyStatus(chunk, rewritten, conversation);
    } else if (name == "MSG"sv) {
        return filterMessage(chunk, rewritten, conversation);
    }
    return chunk;
}

std::string_view filterServerChunk(std::string_view chunk, std::string& rewritten,
                                   Conversation& conversation) {
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
        learnAccount(chunk, conversation);
    } else if (name == "FLN"sv) {
        alerts::offline(chunk, conversation);
    } else if (name == "RNG"sv) {
        alerts::openWindow(chunk, conversation);
    } else if (name == "MSG"sv) {
        return filterText(chunk, rewritten, conversation);
    } else if (name == "BYE"sv) {
        alerts::closeWindow(chunk, conversation);
    }
    return chunk;
}
