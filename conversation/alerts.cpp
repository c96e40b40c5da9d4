#include "conversation/alerts.h"

#include "base/text.h"
#include "conversation/Conversation.h"
#include "conversation/ProgramWindows.h"
#include "conversation/injection.h"
#include "desktop/mdlFunctions.h"
#include "stores/SettingsStore.h"
#include "stores/mdlEncode.h"
#include "stores/options.h"

#include <optional>
#include <string>

using namespace std::string_view_literals;

namespace {

constexpr std::string_view alertColor = "ff";
constexpr std::string_view noEffects;

/// The most bytes of a text that are kept as a contact's last words.
constexpr std::size_t mostBytes = 65536;

bool isOn(Conversation& conversation, const options::Switch& option) {
    return isOn(conversation.services.settings, option);
}

/// The user wants contacts named by their address, and not by their nick name.
bool namesByAddress(Conversation& conversation) {
    return textOf(conversation.services.settings, options::callby) == options::byAddress;
}

/// The contact who opens a window. A nick name is the last word of its line and keeps the line end.
std::optional<std::string> openerIn(std::string_view chunk, Conversation& conversation) {
    const bool byAddress = namesByAddress(conversation);
    const auto opener = word(chunk, byAddress ? 5 : 6);
    if (!opener || byAddress) return std::optional<std::string>(opener);
    return mdlFunctions::UrlDecode(*opener);
}

std::optional<std::string> contactName(Conversation& conversation) {
    if (namesByAddress(conversation)) return conversation.connection.contactEmail;
    return mdlFunctions::UrlDecode(conversation.connection.contactNick);
}

/// Shows words in the conversation; nothing happens when the client is gone.
void inject(Conversation& conversation, const std::string& words, std::string_view color) {
    (void)injection::InjectMessage(conversation, words, color, noEffects);
}

void showPopup(Conversation& conversation, const std::string& words) {
    conversation.services.windows.popup(words);
}

/// A nick name may bring a line end with it.
void addToLog(Conversation& conversation, const std::string& words) {
    conversation.services.windows.addToLog(removeAll(words, lineEnd));
}

bool isBlank(std::string_view text) {
    text = trimmed(text);
    return text.empty() || text == "\r\n"sv || text == "\r\n\r\n"sv;
}

}  // namespace

void alerts::openWindow(std::string_view chunk, Conversation& conversation) {
    if (!isOn(conversation, options::alertopenwindow)) return;
    const auto opener = openerIn(chunk, conversation);
    if (!opener) return;
    const std::string words = *opener + " has opened a conversation window.";
    showPopup(conversation, words);
    addToLog(conversation, words);
}

void alerts::join(Conversation& conversation) {
    if (!isOn(conversation, options::alertjoinwindow)) return;
    if (!isOn(conversation, options::alertopenwindow)) return;
    const auto contact = contactName(conversation);
    if (!contact) return;
    const std::string name = injection::boldName(*contact, conversation);
    inject(conversation, name + " has joined the conversation window.", alertColor);
}

void alerts::lastWords(Conversation& conversation) {
    const std::string& contact = conversation.connection.contactEmail;
    const std::string kept =
        conversation.services.settings.ReadSetting(SettingsStore::lastWords, contact);
    if (kept.empty()) return;
    if (!isOn(conversation, options::lastthing)) return;
    const std::string words = mdlEncode::Base64Decode(kept).value_or(kept);
    const std::string name = injection::boldName(contact, conversation);
    inject(conversation, "Last thing " + name + " said:\r\n\r\n" + words, "");
}

void alerts::closeWindow(std::string_view chunk, Conversation& conversation) {
    if (!isOn(conversation, options::alertclosewindow)) return;
    // A contact who was dropped, and has not left, is marked by a further word.
    if (word(chunk, 2)) return;
    const std::string leaver = removeAll(word(chunk, 1).value_or(""), lineEnd);
    constexpr std::string_view left = " has left your conversation window.";
    // The words come in the contact's own name, so another one who leaves has to be named.
    inject(conversation,
           leaver == conversation.connection.contactEmail
               ? "I have left your conversation window."
               : injection::boldName(leaver, conversation).append(left),
           alertColor);
    addToLog(conversation, leaver + std::string(left));
}

void alerts::offline(std::string_view chunk, Conversation& conversation) {
    if (!isOn(conversation, options::alertoffline)) return;
    constexpr std::string_view gone = " is now offline.";
    // The toast shows the address alone. The log entry takes all up to the next blank: where
    // several commands came in one read, the address there has the next command's name behind it.
    if (const auto contact = word(firstLine(chunk), 1)) {
        showPopup(conversation, std::string(*contact).append(gone));
    }
    if (const auto contact = word(chunk, 1)) {
        addToLog(conversation, std::string(*contact).append(gone));
    }
}

void alerts::rememberWords(std::string_view sender, std::string_view text,
                           Conversation& conversation) {
    if (isBlank(text)) return;
    conversation.services.settings.WriteSetting(SettingsStore::lastWords, sender,
                                                mdlEncode::Base64Encode(text.substr(0, mostBytes)));
}
