#include "conversation/alerts.h"

#include "base/Failure.h"
#include "base/text.h"
#include "conversation/Conversation.h"
#include "conversation/injection.h"
#include "desktop/mdlFunctions.h"
#include "stores/SettingsStore.h"
#include "stores/mdlEncode.h"
#include "stores/options.h"

#include <string>

using namespace std::string_view_literals;

namespace {

constexpr std::string_view alertColor = "ff";
constexpr std::string_view noEffects;
constexpr std::string_view lineEnd = "\r\n";

/// Where last words are kept, one entry for each contact.
constexpr std::string_view lastWordsSection = "lastthingusersaid";

bool isOn(Conversation& conversation, const options::Switch& option) {
    return isOn(conversation.services.settings, option);
}

/// The user wants contacts named by their address, and not by their nick name.
bool namesByAddress(Conversation& conversation) {
    return textOf(conversation.services.settings, options::callby) == "e";
}

/// The contact who opens a window. A nick name is the last word of its line and keeps the line end.
std::string openerIn(std::string_view chunk, Conversation& conversation) {
    if (namesByAddress(conversation)) return std::string(word(chunk, 5));
    return mdlFunctions::UrlDecode(word(chunk, 6));
}

std::string contactName(Conversation& conversation) {
    if (namesByAddress(conversation)) return conversation.connection.contactEmail;
    return mdlFunctions::UrlDecode(conversation.connection.contactNick);
}

bool isBlank(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) return true;
    text = text.substr(first, text.find_last_not_of(' ') - first + 1);
    return text == "\r\n"sv || text == "\r\n\r\n"sv;
}

}  // namespace

void alerts::openWindow(std::string_view chunk, Conversation& conversation) {
    if (!isOn(conversation, options::alertopenwindow)) return;
    constexpr std::string_view opened = " has opened a conversation window.";
    attempt([&] { conversation.showPopup(openerIn(chunk, conversation).append(opened)); });
    attempt([&] { conversation.addToLog(openerIn(chunk, conversation).append(opened)); });
}

void alerts::join(Conversation& conversation) {
    if (!isOn(conversation, options::alertjoinwindow)) return;
    if (!isOn(conversation, options::alertopenwindow)) return;
    attempt([&] {
        const std::string name = injection::boldName(contactName(conversation), conversation);
        injection::InjectMessage(conversation, name + " has joined the conversation window.",
                                 alertColor, noEffects);
    });
}

void alerts::lastWords(Conversation& conversation) {
    const std::string& contact = conversation.connection.contactEmail;
    std::string words = conversation.services.settings.ReadSetting(lastWordsSection, contact);
    if (words.empty()) return;
    if (!isOn(conversation, options::lastthing)) return;
    attempt([&] { words = mdlEncode::Base64Decode(words); });
    attempt([&] {
        injection::InjectMessage(
            conversation,
            "Last thing " + injection::boldName(contact, conversation) + " said:\r\n\r\n" + words,
            "", noEffects);
    });
}

void alerts::closeWindow(std::string_view chunk, Conversation& conversation) {
    if (!isOn(conversation, options::alertclosewindow)) return;
    // A contact who was dropped, and has not left, is marked by a further word.
    bool dropped = false;
    attempt([&] {
        (void)word(chunk, 2);
        dropped = true;
    });
    if (dropped) return;
    std::string leaver;
    attempt([&] { leaver = removeAll(word(chunk, 1), lineEnd); });
    constexpr std::string_view left = " has left your conversation window.";
    attempt([&] {
        // The words come in the contact's own name, so another one who leaves has to be named.
        const std::string words = leaver == conversation.connection.contactEmail
                                      ? "I have left your conversation window."
                                      : injection::boldName(leaver, conversation).append(left);
        injection::InjectMessage(conversation, words, alertColor, noEffects);
    });
    attempt([&] { conversation.addToLog(leaver.append(left)); });
}

void alerts::offline(std::string_view chunk, Conversation& conversation) {
    if (!isOn(conversation, options::alertoffline)) return;
    constexpr std::string_view gone = " is now offline.";
    attempt([&] { conversation.showPopup(std::string(word(line(chunk, 0), 1)).append(gone)); });
    attempt([&] { conversation.addToLog(std::string(word(chunk, 1)).append(gone)); });
}

void alerts::rememberWords(std::string_view sender, std::string_view text,
                           Conversation& conversation) {
    if (isBlank(text)) return;
    conversation.services.settings.WriteSetting(lastWordsSection, sender,
                                                mdlEncode::Base64Encode(text));
}
