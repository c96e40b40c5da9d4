#include "proxy/clientFilter.h"

#include "base/Failure.h"
#include "base/text.h"
#include "conversation/ConnectionRecord.h"
#include "conversation/ProcessValues.h"
#include "desktop/mdlFunctions.h"
#include "proxy/ProxyHost.h"
#include "proxy/hostForms.h"
#include "stores/SettingsStore.h"

#include <utility>

using namespace std::string_view_literals;

namespace {

void learnDialect(std::string_view chunk, ConnectionRecord& connection) {
    if (holds([&] { return word(chunk, 2) == "MSNP9"sv; })) connection.protocolVersion = "9";
    if (holds([&] { return word(chunk, 2) == "MSNP10"sv; })) connection.protocolVersion = "10";
}

/// The client's first status, online or offline as it signs in, becomes the user's choice.
void applyStatus(std::string& chunk, ConnectionRecord& connection, ProxyHost& host) {
    connection.statusApplied = true;
    host.values.loggedin = true;
    std::string caption = "Cobweave - Logged In";
    attempt([&] { host.tray.changetraycaption(caption); });
    attempt([&] { host.values.statusPostfix = word(chunk, 3); });
    const std::string status = host.settings.ReadSetting("Options", "initialStatus");
    chunk = replaceFirst(std::move(chunk), "NLN"sv, "{status}"sv);
    chunk = replaceFirst(std::move(chunk), "FLN"sv, "{status}"sv);
    chunk = replaceFirst(std::move(chunk), "{status}"sv, mdlFunctions::StatusCodeFromName(status));
}

void filterMessage(std::string& chunk, ProxyHost& host) {
    constexpr std::string_view peerToPeer = "Content-Type: application/x-msnmsgrp2p";
    if (!holds([&] { return line(chunk, 2) != peerToPeer; })) return;
    if (host.settings.ReadSetting("Options", "useristyping") == "True") {
        // The contact's client does not know this header and shows nothing; the length stays.
        chunk = replaceFirst(std::move(chunk), "TypingUser:"sv, "TypingUserx"sv);
    }
}

}  // namespace

void filterClientChunk(std::string& chunk, ConnectionRecord& connection, ProxyHost& host) {
    attempt([&] { host.values.tranID = word(chunk, 1); });
    const std::string_view name = characters(chunk, 1, 3);
    if (name == "VER"sv) {
        learnDialect(chunk, connection);
    } else if (name == "CHG"sv) {
        host.values.serverID = connection.formID;
        if (!connection.statusApplied) applyStatus(chunk, connection, host);
    } else if (name == "MSG"sv) {
        filterMessage(chunk, host);
    }
}
