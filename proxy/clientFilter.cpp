#include "proxy/clientFilter.h"

#include "base/Failure.h"
#include "base/text.h"
#include "conversation/Conversation.h"
#include "conversation/ProcessValues.h"
#include "conversation/chatCommands.h"
#include "desktop/mdlFunctions.h"
#include "proxy/ProgramWindows.h"
#include "stores/options.h"

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
void applyStatus(std::string& chunk, Conversation& conversation, const ProgramWindows& windows) {
    Services& services = conversation.services;
    conversation.connection.statusApplied = true;
    services.values.loggedin = true;
    std::string caption = "Cobweave - Logged In";
    windows.changetraycaption(caption);
    if (const auto postfix = word(chunk, 3)) services.values.statusPostfix = *postfix;
    const std::string status = textOf(services.settings, options::initialStatus);
    chunk = replaceFirst(std::move(chunk), "NLN"sv, "{status}"sv);
    chunk = replaceFirst(std::move(chunk), "FLN"sv, "{status}"sv);
    chunk = replaceFirst(std::move(chunk), "{status}"sv, mdlFunctions::StatusCodeFromName(status));
}

void filterMessage(std::string& chunk, Conversation& conversation) {
    constexpr std::string_view peerToPeer = "Content-Type: application/x-msnmsgrp2p";
    if (line(chunk, 2) == peerToPeer) return;
    attempt([&] { chatCommands::FilterOutgoing(chunk, conversation); });
    if (isOn(conversation.services.settings, options::useristyping)) {
        // The contact's client does not know this header and shows nothing; the length stays.
        chunk = replaceFirst(std::move(chunk), "TypingUser:"sv, "TypingUserx"sv);
    }
}

}  // namespace

void filterClientChunk(std::string& chunk, Conversation& conversation,
                       const ProgramWindows& windows) {
    ProcessValues& values = conversation.services.values;
    ConnectionRecord& connection = conversation.connection;
    if (const auto number = word(chunk, 1)) values.tranID = *number;
    const std::string_view name = characters(chunk, 1, 3);
    if (name == "VER"sv) {
        learnDialect(chunk, connection);
    } else if (name == "CHG"sv) {
        values.serverID = connection.formID;
        if (!connection.statusApplied) applyStatus(chunk, conversation, windows);
    } else if (name == "MSG"sv) {
        filterMessage(chunk, conversation);
    }
}
